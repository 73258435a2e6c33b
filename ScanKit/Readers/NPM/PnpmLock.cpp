#include "ScanKit/Readers/NPM/PnpmLock.h"

#include "ScanKit/Readers/NPM/PnpmPeers.h"
#include "ScanKit/Support/YAML.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

/// A package as a key of the lockfile names it.
struct Identity {
    std::string_view name;
    std::string_view version;  ///< of a package from elsewhere than a registry, the address
};

/// The key without what stands behind the version in parentheses since format 6: peers, and the sum of a patch.
/// They nest, and a path may hold parentheses of its own.
std::string_view withoutPeers(std::string_view key) {
    std::size_t start = key.size();
    std::size_t open = 0;
    for (std::size_t i = key.size(); i-- > 0;) {
        if (key[i] == ')') {
            ++open;
        } else if (open == 0) {
            break;
        } else if (key[i] == '(' && --open == 0) {
            start = i;
        }
    }
    return key.substr(0, start);
}

/// "@scope/name@1.0.0", or in format 5 "@scope/name/1.0.0_peers".
std::optional<Identity> identityOf(std::string_view key) {
    key = withoutPeers(key);
    const std::size_t slash = key.starts_with('@') ? key.find('/') : 0;
    if (slash == std::string_view::npos) {
        return std::nullopt;
    }
    const std::size_t end = key.find_first_of("/@", slash + 1);
    if (end == std::string_view::npos || end == 0 || end + 1 == key.size()) {
        return std::nullopt;
    }
    Identity identity{key.substr(0, end), key.substr(end + 1)};
    if (key[end] == '/') {
        identity.version = identity.version.substr(0, identity.version.find_first_of("/_"));
    }
    return identity;
}

/// A version of a registry, not an address.
bool isNumber(std::string_view version) {
    return !version.empty() && version.front() >= '0' && version.front() <= '9' &&
           version.find(':') == std::string_view::npos && version.find('/') == std::string_view::npos;
}

bool isLocal(std::string_view reference) {
    return reference.starts_with("file:") || reference.starts_with("link:") ||
           reference.starts_with("workspace:");
}

/// The name and version in the key of any format. A key without a slash before it, in the formats that have one, begins with
/// a host and says nothing certain.
Identity identityOfEntry(std::string_view key, bool keysBeginWithSlash) {
    std::optional<Identity> identity;
    if (key.starts_with('/')) {
        identity = identityOf(key.substr(1));
    } else if (!keysBeginWithSlash) {
        return identityOf(key).value_or(Identity{});
    } else if (const std::size_t slash = key.find('/'); slash != std::string_view::npos) {
        identity = identityOf(key.substr(slash + 1));
    }
    return identity && isNumber(identity->version) ? *identity : Identity{};
}

/// Where a package that is in no registry comes from.
std::optional<std::string> sourceOf(const DataValue& resolution) {
    for (const std::string_view member : {"tarball", "repo"}) {
        if (const auto address = resolution.textMember(member); address && !address->empty()) {
            return std::string(*address);
        }
    }
    return std::nullopt;
}

LockedEntry entryOf(std::string_view key, const DataValue& package, bool keysBeginWithSlash) {
    LockedEntry entry{.key = std::string(key)};
    if (!package.isTable()) {
        entry.isUnreadable = true;
        return entry;
    }
    const Identity identity = identityOfEntry(key, keysBeginWithSlash);
    entry.name = package.textMember("name").value_or(identity.name);
    if (const auto version = package.textMember("version")) {
        entry.version = *version;
    } else if (isNumber(identity.version)) {
        entry.version = identity.version;
    }
    entry.isOwn = isLocal(key) || isLocal(identity.version);
    if (const DataValue* const resolution = package.member("resolution")) {
        entry.source = sourceOf(*resolution);
        entry.isOwn = entry.isOwn || resolution->textMember("type") == "directory";
    }
    entry.isUnreadable = entry.name.empty() && !entry.isOwn;
    return entry;
}

/// What an entry or a project asks for, and whether it may be missing.
struct Section {
    std::string_view name;
    std::vector<std::size_t> Lockfile::*wishes;
};
constexpr std::array<Section, 3> projectSections{{{"dependencies", &Lockfile::shipped},
                                                  {"optionalDependencies", &Lockfile::shippedIfPresent},
                                                  {"devDependencies", &Lockfile::development}}};

/// Before the document of the project there may be one of pnpm's own, for the version of pnpm that the project runs and for
/// pnpm's plug-ins. Nothing in it is the project's.
bool isOfPnpmItself(const DataValue& document) {
    const DataValue* const importers = document.member("importers");
    return importers != nullptr && !importers->members().empty() &&
           std::ranges::all_of(importers->members(), [](const DataValue::Member& importer) {
               return importer.second.member("configDependencies") != nullptr ||
                      importer.second.member("packageManagerDependencies") != nullptr;
           });
}

/// Since format 6 the words of the project's manifest stand beside what they led to.
std::optional<std::string_view> referenceOf(const DataValue& value) {
    return value.isTable() ? value.textMember("version") : value.text();
}

bool isTableOrAbsent(const DataValue* value) {
    return value == nullptr || value->isTable();
}

constexpr int firstWithoutOptionalPeers = 11;  ///< the major version of pnpm

/// Puts together what a lockfile says: first its entries, then who asks for which.
class Reader {
public:
    explicit Reader(std::optional<int> pnpm)
        : followsOptionalPeers_(!pnpm || *pnpm < firstWithoutOptionalPeers) {}

    /// False when this is no lockfile of a format that we know.
    bool addEntries(const DataValue& top) {
        static constexpr std::array<std::string_view, 3> formats{"5", "6", "9"};
        const std::string_view version = top.textMember("lockfileVersion").value_or("");
        const std::string_view format = version.substr(0, version.find('.'));
        const DataValue* const packages = top.member("packages");
        const DataValue* const snapshots = top.member("snapshots");
        if (std::ranges::find(formats, format) == formats.end() || !isTableOrAbsent(packages) ||
            !isTableOrAbsent(snapshots)) {
            return false;
        }
        const bool hasPackages = packages != nullptr && !packages->members().empty();
        if (format == "9" && hasPackages && snapshots == nullptr) {
            return false;  // the second half of the file is missing
        }
        const bool keysBeginWithSlash = format != "9";
        std::unordered_map<std::string_view, const DataValue*> descriptions;
        for (const auto& [key, package] : hasPackages ? packages->members() : noMembers_) {
            descriptions.emplace(key, &package);
        }
        if (snapshots != nullptr) {
            addSnapshots(*snapshots, descriptions);
        }
        for (const auto& [key, package] : hasPackages ? packages->members() : noMembers_) {
            if (descriptions.contains(key)) {
                add(entryOf(key, package, keysBeginWithSlash), &package, &package);
            }
        }
        return true;
    }

    /// The same.
    bool addWishes(const DataValue& top) {
        const DataValue* const importers = top.member("importers");
        if (importers == nullptr) {
            return addWishesOf(top);
        }
        for (const auto& [folder, importer] : importers->members()) {
            if (!importer.isTable() || !addWishesOf(importer)) {
                return false;
            }
            if (folder != ".") {
                lockfile_.members.push_back(folder);
            }
        }
        return importers->isTable();
    }

    void addNeeds() {
        // What is missing is appended on the way, and needs nothing.
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            std::vector<std::size_t> needs;
            std::vector<std::size_t> needsIfPresent;
            if (sources_[i] != nullptr &&
                !(resolveAll(sources_[i]->member("dependencies"), needs) &&
                  resolveAll(sources_[i]->member("optionalDependencies"), needsIfPresent))) {
                lockfile_.entries[i].isUnreadable = true;
            }
            lockfile_.entries[i].needs = std::move(needs);
            lockfile_.entries[i].needsIfPresent = std::move(needsIfPresent);
        }
        if (!followsOptionalPeers_) {
            leaveOutPeers(lockfile_, members_, optionalPeers());
        }
    }

    Lockfile lockfile() && {
        lockfile_.knowsWays = asks_ || lockfile_.entries.empty();
        return std::move(lockfile_);
    }

private:
    /// Format 9 describes each package once, and once more for each set of peers what it needs.
    void addSnapshots(const DataValue& snapshots,
                      std::unordered_map<std::string_view, const DataValue*>& descriptions) {
        const DataValue nothing{std::vector<DataValue::Member>{}};
        std::vector<std::string_view> described;
        for (const auto& [key, snapshot] : snapshots.members()) {
            const std::string_view shortKey = descriptions.contains(key) ? key : withoutPeers(key);
            const auto found = descriptions.find(shortKey);
            LockedEntry entry = entryOf(key, found != descriptions.end() ? *found->second : nothing, false);
            entry.isUnreadable = entry.isUnreadable || !snapshot.isTable();
            add(std::move(entry), &snapshot, found != descriptions.end() ? found->second : nullptr);
            described.push_back(shortKey);
        }
        for (const std::string_view key : described) {
            descriptions.erase(key);
        }
    }

    std::size_t add(LockedEntry entry, const DataValue* source, const DataValue* description) {
        const auto [place, isNew] = places_.try_emplace(entry.key, lockfile_.entries.size());
        if (isNew) {
            lockfile_.entries.push_back(std::move(entry));
            sources_.push_back(source);
            descriptions_.push_back(description);
        }
        return place->second;
    }

    bool addWishesOf(const DataValue& project) {
        Lockfile wishes;
        const bool isWhole = std::ranges::all_of(projectSections, [&](const Section& section) {
            const DataValue* const references = project.member(section.name);
            asks_ = asks_ || references != nullptr;
            return resolveAll(references, wishes.*section.wishes);
        });
        PnpmMember member{.development = {wishes.development.begin(), wishes.development.end()}};
        for (const Section& section : projectSections) {
            const std::vector<std::size_t>& places = wishes.*section.wishes;
            std::vector<std::size_t>& all = lockfile_.*section.wishes;
            all.insert(all.end(), places.begin(), places.end());
            if (section.wishes != &Lockfile::development) {
                member.shipped.insert(member.shipped.end(), places.begin(), places.end());
            }
        }
        members_.push_back(std::move(member));
        return isWhole;
    }

    /// False when this is not what it should be: names and references.
    bool resolveAll(const DataValue* references, std::vector<std::size_t>& places) {
        if (!isTableOrAbsent(references)) {
            return false;
        }
        bool isWhole = true;
        for (const auto& [name, value] : references != nullptr ? references->members() : noMembers_) {
            const std::optional<std::string_view> reference = referenceOf(value);
            isWhole = isWhole && reference.has_value();
            if (const auto place = reference ? resolve(name, *reference) : std::nullopt) {
                places.push_back(*place);
            }
        }
        return isWhole;
    }

    /// The needs that a package can do without, of what a member lists for its development.
    std::set<PnpmNeed> optionalPeers() const {
        const std::set<std::size_t> development(lockfile_.development.begin(), lockfile_.development.end());
        std::set<PnpmNeed> peers;
        for (std::size_t i = 0; i < descriptions_.size(); ++i) {
            const DataValue* const described =
                descriptions_[i] != nullptr ? descriptions_[i]->member("peerDependenciesMeta") : nullptr;
            if (described == nullptr) {
                continue;
            }
            for (const auto* const needs :
                 {&lockfile_.entries[i].needs, &lockfile_.entries[i].needsIfPresent}) {
                for (const std::size_t place : *needs) {
                    const DataValue* const peer = described->member(lockfile_.entries[place].name);
                    if (peer != nullptr && peer->isTrue("optional") && development.contains(place)) {
                        peers.emplace(i, place);
                    }
                }
            }
        }
        return peers;
    }

    /// A reference is the rest of the key behind the name, or a whole key: of an alias, or of what is in no registry.
    std::optional<std::size_t> resolve(const std::string& name, std::string_view reference) {
        struct KeyForm {
            std::string_view before, between;
            bool hasName;
        };
        static constexpr std::array<KeyForm, 4> keyForms{
            {{"", "@", true}, {"/", "@", true}, {"/", "/", true}, {"", "", false}}};
        for (const auto& [before, between, hasName] : keyForms) {
            key_ = before;
            key_.append(hasName ? name : "").append(between).append(reference);
            if (const auto place = places_.find(key_); place != places_.end()) {
                return place->second;
            }
        }
        if (isLocal(reference)) {
            return std::nullopt;  // the project's own folder, which needs no entry
        }
        LockedEntry missing{.key = name + "@" + std::string(reference), .name = name, .isUnreadable = true};
        if (const std::string_view version = withoutPeers(reference); isNumber(version)) {
            missing.version = version;
        }
        return add(std::move(missing), nullptr, nullptr);
    }

    Lockfile lockfile_;
    std::unordered_map<std::string, std::size_t> places_;
    std::vector<const DataValue*> sources_;       ///< of each entry: what says its needs
    std::vector<const DataValue*> descriptions_;  ///< of each entry: what says which of them are peers
    bool followsOptionalPeers_;
    std::vector<PnpmMember> members_;  ///< of the workspace
    std::string key_;                  ///< the one looked for, kept for its room
    bool asks_ = false;                ///< the file says what the project itself asks for
    const std::vector<DataValue::Member> noMembers_ = {};
};

}  // namespace

std::optional<Lockfile> pnpmLock(std::string_view text, std::optional<int> pnpm) {
    std::optional<std::vector<DataValue>> documents = readYAMLDocuments(text);
    if (!documents || documents->empty()) {
        return std::nullopt;
    }
    if (isOfPnpmItself(documents->front())) {
        documents->erase(documents->begin());
    }
    Reader reader(pnpm);
    if (documents->size() != 1 || !reader.addEntries(documents->front()) ||
        !reader.addWishes(documents->front())) {
        return std::nullopt;
    }
    reader.addNeeds();
    return std::move(reader).lockfile();
}

}  // namespace ScanKit::NPMParser

#include "ScanKit/Readers/NPM/YarnLock.h"

#include "ScanKit/Readers/NPM/YarnClassicLock.h"
#include "ScanKit/Support/Text.h"
#include "ScanKit/Support/YAML.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view registryProtocol = "npm:";
constexpr std::string_view patchProtocol = "patch:";
constexpr std::string_view catalogProtocol = "catalog:";
constexpr std::string_view workspaceProtocol = "workspace:";
/// A package may be patched by the project and by Yarn itself; a longer chain is not followed.
constexpr int mostPatches = 4;

/// A package as Yarn writes it, "@scope/name@range", in its two halves.
struct Descriptor {
    std::string_view name;
    std::string_view range;
};

Descriptor descriptorOf(std::string_view text) {
    const std::size_t at = text.find('@', 1);
    return at >= text.size() ? Descriptor{text, {}} : Descriptor{text.substr(0, at), text.substr(at + 1)};
}

/// Without what Yarn binds to a range: "file:./a::locator=…" is asked for as "file:./a".
std::string_view withoutBinding(std::string_view text) {
    return text.substr(0, text.find("::"));
}

std::string percentDecoded(std::string_view text) {
    const auto digit = [](char c) {
        return c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
    };
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? digit(text[i + 1]) : -1;
        const int low = high >= 0 ? digit(text[i + 2]) : -1;
        // Only ASCII is escaped here, and only ASCII comes out.
        if (low >= 0 && high < 8) {
            decoded += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

bool startsWithAny(std::string_view text, const auto& prefixes) {
    return std::ranges::any_of(prefixes, [&](std::string_view prefix) { return text.starts_with(prefix); });
}

/// A folder or file of the project, and no package from elsewhere.
bool isLocal(std::string_view range) {
    return startsWithAny(range, std::to_array<std::string_view>({"workspace:", "link:", "portal:", "file:",
                                                                 "exec:", "./", "../", "/", "~/"}));
}

struct Need {
    Request request;
    bool mayBeMissing = false;
};

/// One entry of either format before who needs whom is worked out.
struct Draft {
    LockedEntry entry;
    std::vector<std::string> patterns;
    std::vector<Need> needs;
    std::optional<std::string> member;  ///< the folder, when this is the project or a member of its workspace
};

std::vector<Need> needsOf(const std::vector<Request>& requests, bool mayBeMissing) {
    std::vector<Need> needs;
    for (const Request& request : requests) {
        needs.push_back({request, mayBeMissing});
    }
    return needs;
}

void append(std::vector<Need>& needs, std::vector<Need> more) {
    needs.insert(needs.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// Version 1

/// The package that is installed for a pattern: of an alias, "x@npm:y@1", the target.
std::string_view packageName(Descriptor pattern) {
    if (!pattern.range.starts_with(registryProtocol)) {
        return pattern.name;
    }
    const std::string_view target = pattern.range.substr(registryProtocol.size());
    // Without "@" it is a range of the package itself, as newer versions write it.
    return target.find('@', 1) < target.size() ? descriptorOf(target).name : pattern.name;
}

/// The address without the checksum that Yarn hangs on to an archive's.
std::optional<std::string> archiveAddress(std::string_view resolved) {
    const std::string_view address = resolved.substr(0, resolved.find('#'));
    if (address.find("://") == std::string_view::npos) {
        return std::nullopt;  // a file of an offline mirror
    }
    return std::string(address.ends_with(".tgz") ? address : resolved);
}

Draft draftOf(ClassicEntry& classic) {
    const Descriptor first = descriptorOf(classic.patterns.front());
    Draft draft{.entry = {.key = Text::joined(classic.patterns, ", "),
                          .name = std::string(packageName(first)),
                          .version = std::move(classic.version),
                          .source = archiveAddress(classic.resolved),
                          .isOwn = isLocal(first.range)}};
    draft.entry.isUnreadable =
        draft.entry.name.empty() || (draft.entry.version.empty() && !draft.entry.isOwn);
    draft.patterns = std::move(classic.patterns);
    draft.needs = needsOf(classic.dependencies, false);
    append(draft.needs, needsOf(classic.optionalDependencies, true));
    return draft;
}

std::optional<std::vector<Draft>> classicDrafts(std::string_view text) {
    std::optional<std::vector<ClassicEntry>> entries = readYarnClassic(text);
    if (!entries) {
        return std::nullopt;
    }
    std::vector<Draft> drafts;
    for (ClassicEntry& entry : *entries) {
        drafts.push_back(draftOf(entry));
    }
    return drafts;
}

// Later versions

/// Where a package comes from when that is not the registry, or is a place of its own in a registry.
std::optional<std::string> addressOf(std::string_view reference) {
    constexpr std::string_view archive = "::__archiveUrl=";
    if (const std::size_t at = reference.find(archive); at != std::string_view::npos) {
        const std::string_view address = reference.substr(at + archive.size());
        return percentDecoded(address.substr(0, address.find('&')));
    }
    const bool isAddress = reference.find("://") != std::string_view::npos || reference.starts_with("git@");
    return isAddress && !reference.starts_with(patchProtocol)
               ? std::optional<std::string>(withoutBinding(reference))
               : std::nullopt;
}

std::vector<Need> needsOf(const DataValue& entry) {
    const DataValue* const dependencies = entry.member("dependencies");
    const DataValue* const meta = entry.member("dependenciesMeta");
    std::unordered_set<std::string_view> optional;
    if (meta != nullptr) {
        for (const auto& [name, about] : meta->members()) {
            if (about.isTrue("optional")) {
                optional.insert(name);
            }
        }
    }
    std::vector<Need> needs;
    if (dependencies != nullptr) {
        for (const auto& [name, range] : dependencies->members()) {
            if (const auto text = range.text()) {
                needs.push_back({{name, std::string(*text)}, optional.contains(name)});
            }
        }
    }
    return needs;
}

Draft draftOf(const std::string& key, const DataValue& value) {
    const auto resolution = value.textMember("resolution");
    const Descriptor chosen = descriptorOf(resolution.value_or(""));
    Draft draft{.entry = {.key = key,
                          .name = std::string(chosen.name),
                          .version = std::string(value.textMember("version").value_or("")),
                          .source = addressOf(chosen.range),
                          .isOwn = isLocal(chosen.range) || value.textMember("linkType") == "soft"}};
    draft.entry.isUnreadable =
        draft.entry.name.empty() || (draft.entry.version.empty() && !draft.entry.isOwn);
    for (const std::string_view pattern : Text::split(key, ",")) {
        draft.patterns.emplace_back(withoutBinding(Text::trimmed(pattern)));
    }
    draft.needs = needsOf(value);
    if (chosen.range.starts_with(workspaceProtocol)) {
        draft.member = chosen.range.substr(workspaceProtocol.size());
    }
    return draft;
}

std::optional<std::vector<Draft>> modernDrafts(std::string_view text) {
    const std::optional<DataValue> top = readYAML(text);
    if (!top || !top->isTable()) {
        return std::nullopt;
    }
    std::vector<Draft> drafts;
    for (const auto& [key, value] : top->members()) {
        if (key != "__metadata") {
            drafts.push_back(draftOf(key, value));
        }
    }
    return drafts;
}

// Both

/// The parts of a way to a package; a scope belongs to the name behind it.
std::vector<std::string> stepsOf(std::string_view way) {
    std::vector<std::string> steps;
    bool isInScope = false;
    for (const std::string_view part : Text::split(way, "/")) {
        if (isInScope) {
            steps.back().append("/").append(part);
        } else {
            steps.emplace_back(part);
        }
        // A range may hold slashes too, and only a scope is without a name before its "@".
        isInScope = !isInScope && part.starts_with('@') && part.find('@', 1) == std::string_view::npos;
    }
    return steps;
}

/// What the project's settings say of "catalog:" ranges: the range by catalog, "/" and package; the plain one has no name.
using Catalogs = std::unordered_map<std::string, std::string>;

void addCatalog(std::string_view name, const DataValue* catalog, Catalogs& catalogs) {
    if (catalog != nullptr) {
        for (const auto& [package, range] : catalog->members()) {
            catalogs.insert_or_assign(std::string(name) + "/" + package, range.text().value_or(""));
        }
    }
}

Catalogs readCatalogs(std::string_view settings) {
    Catalogs catalogs;
    const std::optional<DataValue> top = settings.empty() ? std::nullopt : readYAML(settings);
    if (!top) {
        return catalogs;
    }
    addCatalog("", top->member("catalog"), catalogs);
    if (const DataValue* const named = top->member("catalogs")) {
        for (const auto& [name, catalog] : named->members()) {
            addCatalog(name, &catalog, catalogs);
        }
    }
    return catalogs;
}

/// Finds the entries that answer what is asked for.
class Answers {
public:
    Answers(const std::vector<Draft>& drafts, const std::vector<Manifest>& manifests, Catalogs catalogs)
        : drafts_(drafts), catalogs_(std::move(catalogs)) {
        patchOf_.assign(drafts.size(), drafts.size());
        for (std::size_t i = 0; i < drafts.size(); ++i) {
            for (const std::string& pattern : drafts[i].patterns) {
                addPattern(pattern, i);
            }
        }
        for (const Manifest& manifest : manifests) {
            members_.insert(manifest.name);
        }
        for (std::size_t i = 0; i < drafts.size(); ++i) {
            addPatch(i);
        }
        // Yarn reads those of the project alone.
        if (!manifests.empty()) {
            for (const Request& resolution : manifests.front().resolutions) {
                addResolution(resolution);
            }
        }
    }

    /// What a patch was made from; absent for an entry that is none.
    std::optional<std::size_t> originalOf(std::size_t entry) const {
        for (const std::string& pattern : drafts_[entry].patterns) {
            const Descriptor patched = descriptorOf(pattern);
            if (!patched.range.starts_with(patchProtocol)) {
                continue;
            }
            std::string_view original = patched.range.substr(patchProtocol.size());
            original = original.substr(0, original.find('#'));
            const std::string decoded = percentDecoded(original);
            const Descriptor descriptor = descriptorOf(decoded);
            if (const auto found = exact(descriptor.name, descriptor.range); found && *found != entry) {
                return found;
            }
        }
        return std::nullopt;
    }

    /// Appends the entries for what this package needs. What must be there, and no entry is the name of, becomes an entry
    /// of its own behind the others.
    void find(const std::string& dependant, const Need& need, std::vector<std::size_t>& found) {
        const Request request{need.request.name, rangeOf(need.request)};
        std::optional<std::size_t> entry = resolved(dependant, request);
        if (!entry) {
            entry = exact(request.name, request.range);
        }
        const auto only = onlyOfName_.find(request.name);
        if (!entry && only != onlyOfName_.end()) {
            entry = only->second;
        }
        if (!entry && only == onlyOfName_.end() && !need.mayBeMissing && !members_.contains(request.name) &&
            !isLocal(request.range)) {
            entry = missingEntry(request);
        }
        if (!entry) {
            return;
        }
        found.push_back(*entry);
        std::size_t next = *entry;
        for (int i = 0; i < mostPatches && next < drafts_.size() && patchOf_[next] < drafts_.size(); ++i) {
            next = patchOf_[next];
            found.push_back(next);
        }
    }

    std::vector<LockedEntry> takeMissing() { return std::move(missing_); }

private:
    std::string rangeOf(const Request& request) const {
        if (!request.range.starts_with(catalogProtocol)) {
            return request.range;
        }
        const auto range = catalogs_.find(request.range.substr(catalogProtocol.size()) + "/" + request.name);
        return range != catalogs_.end() ? range->second : request.range;
    }

    void addPattern(const std::string& pattern, std::size_t entry) {
        byPattern_.insert_or_assign(pattern, entry);
        const Descriptor descriptor = descriptorOf(pattern);
        if (descriptor.range.starts_with(patchProtocol)) {
            return;  // it stands beside the entry that it was made from
        }
        const auto [only, isNew] = onlyOfName_.try_emplace(std::string(descriptor.name), entry);
        if (!isNew && only->second != entry) {
            only->second = std::nullopt;
        }
    }

    void addPatch(std::size_t entry) {
        if (const auto original = originalOf(entry); original && patchOf_[*original] == drafts_.size()) {
            patchOf_[*original] = entry;
        }
    }

    std::size_t missingEntry(const Request& request) {
        std::string pattern = request.name + "@" + request.range;
        const std::size_t place = drafts_.size() + missing_.size();
        const auto [known, isNew] = byPattern_.try_emplace(pattern, place);
        if (isNew) {
            missing_.push_back({.key = std::move(pattern), .name = request.name, .isUnreadable = true});
        }
        return known->second;
    }

    void addResolution(const Request& written) {
        const std::vector<std::string> steps = stepsOf(written.name);
        if (steps.size() > 2) {
            return;  // a longer way cannot be told from one step of it
        }
        const bool hasParent = steps.size() == 2 && steps.front() != "**";
        const std::string_view parent = hasParent ? descriptorOf(steps.front()).name : std::string_view();
        const Descriptor package = descriptorOf(steps.back());
        resolutions_.insert_or_assign(resolutionKey(parent, package.name, package.range), written.range);
    }

    static std::string resolutionKey(std::string_view parent, std::string_view name, std::string_view range) {
        return std::string(parent) + "/" + std::string(name) + "@" + std::string(range);
    }

    std::optional<std::size_t> exact(std::string_view name, std::string_view range) const {
        const std::string package = std::string(name) + "@";
        // A range without protocol is the registry's, and newer versions write so.
        for (const std::string_view protocol : {std::string_view(), registryProtocol}) {
            if (const auto found = byPattern_.find(package + std::string(protocol) + std::string(range));
                found != byPattern_.end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }

    /// What the project takes instead of what is asked for; the narrower resolution goes first.
    std::optional<std::size_t> resolved(std::string_view dependant, const Request& request) const {
        if (resolutions_.empty()) {
            return std::nullopt;
        }
        std::string_view bare = request.range;
        bare.remove_prefix(bare.starts_with(registryProtocol) ? registryProtocol.size() : 0);
        for (const std::string_view parent : {dependant, std::string_view()}) {
            for (const std::string_view range : {std::string_view(request.range), bare, std::string_view()}) {
                const auto taken = resolutions_.find(resolutionKey(parent, request.name, range));
                if (const auto found =
                        taken != resolutions_.end() ? exact(request.name, taken->second) : std::nullopt) {
                    return found;
                }
            }
        }
        return std::nullopt;
    }

    const std::vector<Draft>& drafts_;
    const Catalogs catalogs_;
    std::unordered_map<std::string, std::size_t> byPattern_;
    std::unordered_map<std::string, std::optional<std::size_t>>
        onlyOfName_;  ///< absent where there are several
    std::unordered_set<std::string> members_;
    std::vector<LockedEntry> missing_;
    std::vector<std::size_t> patchOf_;  ///< by the entry that was patched; the number of entries for none
    std::unordered_map<std::string, std::string>
        resolutions_;  ///< what is taken, by parent, name and range; empty for any
};

/// Puts what a project or member asks for into the lists that say what for.
void addRoots(Answers& answers, const std::string& name, const std::vector<Need>& needs,
              const std::unordered_set<std::string_view>& development, Lockfile& lockfile) {
    for (const Need& need : needs) {
        std::vector<std::size_t>& list = development.contains(need.request.name) ? lockfile.development
                                         : need.mayBeMissing                     ? lockfile.shippedIfPresent
                                                                                 : lockfile.shipped;
        answers.find(name, need, list);
    }
}

/// The older format: all is in the manifests.
void addRoots(Answers& answers, const Manifest& manifest, Lockfile& lockfile) {
    addRoots(answers, manifest.name, needsOf(manifest.dependencies, false), {}, lockfile);
    addRoots(answers, manifest.name, needsOf(manifest.optionalDependencies, true), {}, lockfile);
    for (const Request& request : manifest.developmentDependencies) {
        answers.find(manifest.name, {request}, lockfile.development);
    }
}

/// What a manifest asks for in development alone.
std::unordered_set<std::string_view> developmentOnly(const Manifest& manifest) {
    std::unordered_set<std::string_view> names;
    for (const Request& request : manifest.developmentDependencies) {
        names.insert(request.name);
    }
    for (const auto* shipped : {&manifest.dependencies, &manifest.optionalDependencies}) {
        for (const Request& request : *shipped) {
            names.erase(request.name);
        }
    }
    return names;
}

/// By the member's folder.
using DevelopmentNames = std::unordered_map<std::string_view, std::unordered_set<std::string_view>>;

/// The newer format: the file itself says what its members ask for.
void addRoots(Answers& answers, const Draft& member, const DevelopmentNames& development,
              Lockfile& lockfile) {
    const auto names = development.find(*member.member);
    static const std::unordered_set<std::string_view> none;
    addRoots(answers, member.entry.name, member.needs, names != development.end() ? names->second : none,
             lockfile);
}

void addNeeds(Answers& answers, const Draft& draft, std::size_t place, LockedEntry& entry) {
    for (const Need& need : draft.needs) {
        answers.find(entry.name, need, need.mayBeMissing ? entry.needsIfPresent : entry.needs);
    }
    if (const auto original = answers.originalOf(place)) {
        entry.needs.push_back(*original);
    }
}

/// True when a manifest asks for what is no member of the workspace.
bool askForAny(const std::vector<Manifest>& manifests) {
    std::unordered_set<std::string_view> members;
    for (const Manifest& manifest : manifests) {
        members.insert(manifest.name);
    }
    const auto isFromElsewhere = [&](const Request& request) {
        return !isLocal(request.range) && !members.contains(request.name);
    };
    return std::ranges::any_of(manifests, [&](const Manifest& manifest) {
        return std::ranges::any_of(manifest.dependencies, isFromElsewhere) ||
               std::ranges::any_of(manifest.developmentDependencies, isFromElsewhere);
    });
}

Lockfile joined(std::vector<Draft> drafts, const std::vector<Manifest>& manifests, Catalogs catalogs) {
    Lockfile lockfile;
    Answers answers(drafts, manifests, std::move(catalogs));
    DevelopmentNames development;
    for (const Manifest& manifest : manifests) {
        development.emplace(manifest.below, developmentOnly(manifest));
    }
    bool namesMembers = false;
    for (std::size_t i = 0; i < drafts.size(); ++i) {
        LockedEntry entry = drafts[i].entry;
        if (drafts[i].member) {
            namesMembers = true;
            lockfile.members.push_back(*drafts[i].member);
            addRoots(answers, drafts[i], development, lockfile);
        } else {
            addNeeds(answers, drafts[i], i, entry);
        }
        lockfile.entries.push_back(std::move(entry));
    }
    if (!namesMembers) {
        for (const Manifest& manifest : manifests) {
            addRoots(answers, manifest, lockfile);
            lockfile.members.push_back(manifest.below);
        }
    }
    std::erase(lockfile.members, ".");
    std::ranges::move(answers.takeMissing(), std::back_inserter(lockfile.entries));
    lockfile.knowsWays = namesMembers || !manifests.empty();
    return lockfile;
}

/// True when a line of the text begins with these words.
bool hasLine(std::string_view text, std::string_view start) {
    return text.starts_with(start) || text.find("\n" + std::string(start)) != std::string_view::npos;
}

}  // namespace

std::optional<Lockfile> yarnLock(std::string_view text, const std::vector<Manifest>& manifests,
                                 std::string_view settings) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    text.remove_prefix(text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0);
    std::optional<std::vector<Draft>> drafts =
        hasLine(text, "__metadata:") ? modernDrafts(text) : classicDrafts(text);
    // An empty file marks a project in which nothing was installed yet.
    if (!drafts || (drafts->empty() && askForAny(manifests))) {
        return std::nullopt;
    }
    return joined(std::move(*drafts), manifests, readCatalogs(settings));
}

}  // namespace ScanKit::NPMParser

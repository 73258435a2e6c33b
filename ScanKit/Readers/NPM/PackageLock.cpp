#include "ScanKit/Readers/NPM/PackageLock.h"

#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesPrefix = "node_modules/";
/// No system takes a longer path. Names nested in each other would otherwise make a small file fill the memory.
constexpr std::size_t longestInstallPath = 4096;
/// Of all paths together, in bytes: ten times what a lockfile of 30,000 packages holds. What comes beyond is left
/// out.
constexpr std::size_t mostPathBytes = 64 << 20;

/// One entry as it is found; what it says is taken from it later, many at a time.
struct Entry {
    std::string installPath;
    JSONValue description;
};

/// The names in a group of dependencies. In the first format a group of this name nests whole packages instead, which are no
/// texts.
void appendTextMembers(const JSONValue& entry, std::string_view group, std::vector<std::string>& names) {
    const std::optional<JSONValue> members = entry.member(group);
    for (const auto& [name, range] : members ? members->members() : std::vector<JSONValue::Member>()) {
        if (range.string()) {
            names.emplace_back(name);
        }
    }
}

LockedPackage packageOf(std::string installPath, const JSONValue& entry) {
    const auto isTrue = [&entry](std::string_view member) { return entry.booleanMember(member) == true; };
    LockedPackage package{.name = installPath.substr(installPath.rfind(modulesPrefix) + modulesPrefix.size()),
                          .version = std::string(entry.stringMember("version").value_or("")),
                          .declared = declaredLicense(entry),
                          .isDev = isTrue("dev") || isTrue("devOptional"),
                          .isOptional = isTrue("optional"),
                          .isLink = isTrue("link")};
    if (const auto alias = entry.stringMember("name"); alias && !alias->empty()) {
        package.name = *alias;
    }
    if (const auto resolved = entry.stringMember("resolved"); resolved && !Text::isBlank(*resolved)) {
        package.source = *resolved;
    }
    // "requires" is the name of the first format.
    for (const char* group : {"dependencies", "optionalDependencies", "peerDependencies", "requires"}) {
        appendTextMembers(entry, group, package.needs);
    }
    package.installPath = std::move(installPath);
    return package;
}

LockedMember memberOf(std::string_view path, const JSONValue& entry) {
    LockedMember member{.path = std::string(path)};
    appendTextMembers(entry, "dependencies", member.shipped);
    appendTextMembers(entry, "optionalDependencies", member.shipped);
    appendTextMembers(entry, "devDependencies", member.development);
    return member;
}

/// Versions 2 and 3 list all packages by path. The project itself and its workspaces stand there too, under paths
/// without node_modules.
std::vector<Entry> entriesOfList(const std::vector<JSONValue::Member>& members, PackageLock& lock) {
    std::vector<Entry> entries;
    for (const auto& [path, entry] : members) {
        if (path.find(modulesPrefix) != std::string_view::npos) {
            entries.push_back({std::string(path), entry});
        } else {
            lock.members.push_back(memberOf(path, entry));
        }
    }
    return entries;
}

/// Version 1 nests the packages as their folders are nested.
void appendTree(const JSONValue& tree, const std::string& prefix, std::vector<Entry>& entries,
                std::size_t& pathBytes, std::size_t& leftOut) {
    for (const auto& [name, entry] : tree.members()) {
        std::string path = prefix + std::string(modulesPrefix) + std::string(name);
        if (!entry.isObject() || path.size() > longestInstallPath ||
            pathBytes + path.size() > mostPathBytes) {
            ++leftOut;
            continue;
        }
        pathBytes += path.size();
        if (const std::optional<JSONValue> nested = entry.member("dependencies")) {
            appendTree(*nested, path + "/", entries, pathBytes, leftOut);
        }
        entries.push_back({std::move(path), entry});
    }
}

/// Who needs whom, each package by its place in the lockfile: a name is looked for as the running program does, in the
/// folder's own node_modules and then in those above.
class Needs {
public:
    explicit Needs(const PackageLock& lock) {
        for (std::size_t i = 0; i < lock.packages.size(); ++i) {
            places_.emplace(lock.packages[i].installPath, i);
        }
        graph_.entries.resize(lock.packages.size());
        for (std::size_t i = 0; i < lock.packages.size(); ++i) {
            graph_.entries[i].needs = found(lock.packages[i].needs, lock.packages[i].installPath);
        }
        for (const LockedMember& member : lock.members) {
            std::ranges::move(found(member.shipped, member.path), std::back_inserter(graph_.shipped));
            std::ranges::move(found(member.development, member.path), std::back_inserter(graph_.development));
        }
    }

    const Lockfile& graph() const { return graph_; }

private:
    std::vector<std::size_t> found(const std::vector<std::string>& names, std::string_view from) const {
        std::vector<std::size_t> places;
        places.reserve(names.size());
        std::string path;  // one for all, since a lockfile asks a hundred thousand times
        for (const std::string& name : names) {
            for (std::string_view folder = from;; folder = above(folder)) {
                path = folder;
                path += folder.empty() ? "node_modules/" : "/node_modules/";
                path += name;
                if (const auto place = places_.find(path); place != places_.end()) {
                    places.push_back(place->second);
                    break;
                }
                if (folder.empty()) {
                    break;
                }
            }
        }
        return places;
    }

    /// "node_modules/a" of "node_modules/a/node_modules/b"; the project itself of the last.
    static std::string_view above(std::string_view folder) {
        const std::size_t at = folder.rfind("/node_modules/");
        return at == std::string_view::npos ? std::string_view() : folder.substr(0, at);
    }

    std::unordered_map<std::string_view, std::size_t> places_;  ///< by the lockfile's own texts
    Lockfile graph_;
};

}  // namespace

std::optional<PackageLock> packageLock(std::string_view lockfile, const ReadControl& control) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(lockfile);
    if (!top || !top->isObject()) {
        return std::nullopt;
    }
    PackageLock lock;
    std::vector<Entry> entries;
    const std::optional<JSONValue> list = top->member("packages");
    const std::optional<JSONValue> tree = top->member("dependencies");
    const std::vector<JSONValue::Member> members = list ? list->members() : std::vector<JSONValue::Member>{};
    const auto isObject = [](const JSONValue::Member& member) { return member.second.isObject(); };
    if (list && list->isObject() && std::ranges::all_of(members, isObject)) {
        entries = entriesOfList(members, lock);
    } else if (tree && tree->isObject()) {
        std::size_t pathBytes = 0;
        appendTree(*tree, "", entries, pathBytes, lock.leftOut);
    } else if (list || tree) {
        return std::
            nullopt;  // a project without packages has neither; this has something else in their place
    }
    std::ranges::stable_sort(entries, {}, &Entry::installPath);
    lock.packages.resize(entries.size());
    const auto read = [&](std::size_t i) {
        lock.packages[i] = packageOf(std::move(entries[i].installPath), entries[i].description);
    };
    forEachIndex(entries.size(), read, control.stop, control.threadLimit);
    return lock;
}

LockedWays waysOf(const PackageLock& lock) {
    return LockedWays(Needs(lock).graph());
}

std::shared_ptr<const PackageLock> readPackageLock(const std::filesystem::path& lockfile,
                                                   const ReadControl& control) {
    if (control.cache != nullptr) {
        if (auto known = control.cache->find<PackageLock>(lockfile.string())) {
            return known;
        }
    }
    SeenFiles seen;
    const std::optional<std::string> bytes = readFile(lockfile, largestLockfile, PathKind::unknown, &seen);
    std::optional<PackageLock> read = bytes ? packageLock(*bytes, control) : std::nullopt;
    if (!read) {
        return nullptr;
    }
    const auto lock = std::make_shared<const PackageLock>(std::move(*read));
    // One whose reading was ended lacks some of its packages.
    if (control.cache != nullptr && !control.stop.stop_requested()) {
        control.cache->keep(lockfile.string(), std::move(seen), lock);
    }
    return lock;
}

}  // namespace ScanKit::NPMParser

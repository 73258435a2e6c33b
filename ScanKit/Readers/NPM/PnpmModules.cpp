#include "ScanKit/Readers/NPM/PnpmModules.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/PackageStore.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";
constexpr std::string_view storeName = ".pnpm";

using Folders = std::vector<std::optional<std::filesystem::path>>;

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

/// The entries of a lockfile by what their package.json says, and the folders found for them so far.
class Wanted {
public:
    Wanted(const Lockfile& lockfile, Folders& folders)
        : folders_(folders), isRequired_(lockfile.entries.size()) {
        const std::vector<LockedRole> roles = lockedRoles(lockfile);
        for (std::size_t i = 0; i < lockfile.entries.size(); ++i) {
            const LockedEntry& entry = lockfile.entries[i];
            if (!entry.isOwn && !entry.isUnreadable) {
                places_[entry.name + "@" + entry.version].push_back(i);
                isRequired_[i] = !roles[i].isOptional;
            }
        }
    }
    /// Takes the folder for the entries that are this package and have none yet. False when there is no such entry.
    bool take(const std::filesystem::path& folder, const PackageIdentity& identity) {
        bool isWanted = false;
        // An address names no version; what is installed does.
        for (const std::string& key : {identity.name + "@" + identity.version, identity.name + "@"}) {
            const auto places = places_.find(key);
            if (identity.name.empty() || places == places_.end()) {
                continue;
            }
            isWanted = true;
            for (const std::size_t place : places->second) {
                if (!folders_[place]) {
                    folders_[place] = folder;
                }
            }
        }
        return isWanted;
    }
    /// True when all is found that must be there.
    bool isComplete() const {
        for (std::size_t i = 0; i < folders_.size(); ++i) {
            if (isRequired_[i] && !folders_[i]) {
                return false;
            }
        }
        return true;
    }

private:
    Folders& folders_;
    std::vector<bool> isRequired_;
    std::unordered_map<std::string, std::vector<std::size_t>> places_;
};

/// Goes from the project's node_modules to the packages of the lockfile in it, and from each to what is nested in it and
/// to what lies beside it where it really is: the way by which a package finds those that it needs. Other links
/// lead nowhere, so that no folder is looked at that no package of the lockfile is in.
class LinkSearch {
public:
    LinkSearch(Wanted& wanted, const ReadControl& control) : wanted_(wanted), control_(control) {}

    void search(const std::filesystem::path& nodeModules) {
        enter(nodeModules);
        while (!open_.empty() && !control_.stop.stop_requested()) {
            const std::filesystem::path modules = std::move(open_.back());
            open_.pop_back();
            for (const FolderEntry& entry : listPackageFolder(modules)) {
                if (entry.kind != EntryKind::folder || entry.name.starts_with('.')) {
                    continue;
                }
                if (!entry.name.starts_with('@')) {
                    look(modules / entry.name, entry.isLink);
                    continue;
                }
                for (const FolderEntry& scoped : listPackageFolder(modules / entry.name)) {
                    look(modules / entry.name / scoped.name, scoped.isLink);
                }
            }
        }
    }

private:
    void enter(const std::filesystem::path& modules) {
        if (isFolder(modules) && seen_.insert(resolved(modules).string()).second) {
            open_.push_back(modules);
        }
    }
    void look(const std::filesystem::path& folder, bool isLink) {
        const std::filesystem::path real = isLink ? resolved(folder) : folder;
        if (!seen_.insert(real.string()).second || !wanted_.take(folder, packageIdentity(folder))) {
            return;
        }
        enter(real / modulesName);
        if (isLink) {
            const std::filesystem::path beside = real.parent_path();
            const bool isScope = beside.filename().string().starts_with('@');
            if (const auto modules = isScope ? beside.parent_path() : beside;
                modules.filename() == modulesName) {
                enter(modules);
            }
        }
    }

    Wanted& wanted_;
    const ReadControl& control_;
    std::vector<std::filesystem::path> open_;
    std::unordered_set<std::string> seen_;  ///< links resolved
};

}  // namespace

Folders storedFolders(const Lockfile& lockfile, const std::filesystem::path& projectFolder,
                      PackageStore packages, const ReadControl& control) {
    Folders folders(lockfile.entries.size());
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const LockedEntry& entry = lockfile.entries[i];
        if (!entry.isOwn && !entry.isUnreadable) {
            folders[i] = packages.find(entry.name, entry.version);
        }
    }
    const std::vector<std::filesystem::path> others = packages.unused(control);
    const bool isAllFound =
        std::ranges::all_of(folders, [](const auto& folder) { return folder.has_value(); });
    if (others.empty() && isAllFound && !folders.empty()) {
        return folders;
    }
    Wanted wanted(lockfile, folders);
    std::vector<PackageIdentity> identities(others.size());
    const auto identify = [&](std::size_t i) { identities[i] = packageIdentity(others[i]); };
    forEachIndex(others.size(), identify, control.stop, control.threadLimit);
    for (std::size_t i = 0; i < others.size(); ++i) {
        wanted.take(others[i], identities[i]);
    }
    // A tree without such a store has plain folders, or links to a store that all projects share.
    if (packages.isEmpty() || !wanted.isComplete()) {
        LinkSearch search(wanted, control);
        search.search(standardized(projectFolder) / modulesName);
        for (const std::string& member : lockfile.members) {
            if (const auto folder = folderBelow(projectFolder, member)) {
                search.search(*folder / modulesName);
            }
        }
    }
    return folders;
}

Folders pnpmFolders(const Lockfile& lockfile, const std::filesystem::path& projectFolder,
                    const ReadControl& control) {
    return storedFolders(lockfile, projectFolder, pnpmStore(projectFolder, control), control);
}

std::optional<int> installingPnpm(const std::filesystem::path& projectFolder) {
    // Written as JSON or as YAML: the name is found in both, and the rest, which is long, is not asked for.
    constexpr std::string_view mark = "pnpm@";
    const auto state = readFile(projectFolder / modulesName / ".modules.yaml", largestLockfile);
    const std::size_t member = state ? state->find("packageManager") : std::string::npos;
    const std::size_t at = member != std::string::npos ? state->find(mark, member) : std::string::npos;
    const std::size_t end = at != std::string::npos ? state->find('\n', member) : std::string::npos;
    if (at == std::string::npos || at > end) {
        return std::nullopt;
    }
    int major = 0;
    const char* const begin = state->data() + at + mark.size();
    const auto [_, error] = std::from_chars(begin, state->data() + state->size(), major);
    return error == std::errc() ? std::optional(major) : std::nullopt;
}

PackageStore pnpmStore(const std::filesystem::path& projectFolder, const ReadControl& control) {
    return PackageStore(projectFolder / modulesName / storeName, control);
}

void walkPnpmStore(const std::filesystem::path& nodeModules, Seen& seen, std::vector<RawDependency>& result,
                   const ReadControl& control) {
    std::vector<std::filesystem::path> folders = PackageStore(nodeModules / storeName).packages(control);
    std::erase_if(folders, [&](const std::filesystem::path& folder) {
        return !seen.folders.insert(resolved(folder).string()).second;
    });
    std::vector<std::optional<RawDependency>> packages(folders.size());
    std::vector<char> hasNested(folders.size());
    forEachPackage(folders.size(), control, [&](std::size_t i) {
        InstalledPackage installed = installedPackage(folders[i], control);
        const std::string name = displayName(folders[i]);
        if (!installed.holdsManifest) {
            return name;
        }
        hasNested[i] = installed.modules && installed.modules->kind == EntryKind::folder ? 1 : 0;
        packages[i] = {.ecosystem = Ecosystem::npm, .name = name};
        enrich(*packages[i], std::move(installed));
        return packages[i]->name;
    });
    for (std::size_t i = 0; i < folders.size(); ++i) {
        if (packages[i] && seen.packages.insert(packages[i]->name + "@" + packages[i]->version).second) {
            result.push_back(std::move(*packages[i]));
        }
        if (hasNested[i]) {
            walk(folders[i] / modulesName, 1, seen, result, control);
        }
    }
}

}  // namespace ScanKit::NPMParser

#include "ScanKit/Readers/NPM/NPMParser.h"

#include "ScanKit/Readers/NPM/PackageLock.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

/// Where a package would be installed; absent for a path that no installer writes.
std::optional<std::filesystem::path> installFolder(const std::filesystem::path& projectFolder,
                                                   const std::string& installPath) {
    const std::filesystem::path below = std::filesystem::path(installPath).relative_path();
    if (installPath.find('\0') != std::string::npos || std::ranges::find(below, "..") != below.end()) {
        return std::nullopt;
    }
    return standardized(projectFolder / below);
}

RawDependency dependencyOf(const LockedPackage& package) {
    return {.ecosystem = Ecosystem::npm,
            .name = package.name,
            .version = package.version,
            .source = package.source,
            .isDev = package.isDev,
            .declared = package.declared};
}

/// The package, enriched when it is installed. Absent when it is none to report: a link, a local package, or an
/// optional one that was left out on this system.
std::optional<RawDependency> reported(const LockedPackage& package,
                                      const std::filesystem::path& projectFolder, bool hasModules) {
    if (package.isLink) {
        return std::nullopt;
    }
    std::vector<FolderEntry> entries;
    const auto folder = hasModules ? installFolder(projectFolder, package.installPath) : std::nullopt;
    if (folder) {
        entries = listPackageFolder(*folder);
    }
    const bool isInstalled = holdsManifest(entries);
    // Without a node_modules folder nothing is installed, which says nothing about an optional package.
    if (hasModules && !isInstalled && package.isOptional) {
        return std::nullopt;
    }
    RawDependency dependency = dependencyOf(package);
    if (isInstalled) {
        enrich(dependency, *folder, entries);
    }
    // Asked after the package.json had its word: a lockfile may give a number to a package beside the project.
    if (dependency.version.starts_with("file:") || dependency.version.starts_with("link:")) {
        return std::nullopt;
    }
    return dependency;
}

}  // namespace

std::optional<std::vector<RawDependency>> dependencies(std::string_view lockfile,
                                                       const std::filesystem::path& projectFolder,
                                                       const ReadControl& control) {
    const std::optional<std::vector<LockedPackage>> found = lockedPackages(lockfile, control);
    if (!found) {
        return std::nullopt;
    }
    const std::vector<LockedPackage>& locked = *found;
    const bool hasModules = isFolder(projectFolder / "node_modules");
    std::vector<std::optional<RawDependency>> packages(locked.size());
    forEachPackage(locked.size(), control, [&](std::size_t i) {
        packages[i] = reported(locked[i], projectFolder, hasModules);
        return packages[i] ? packages[i]->name : locked[i].installPath;
    });
    std::vector<RawDependency> result;
    std::unordered_map<std::string, std::size_t> places;
    for (std::optional<RawDependency>& package : packages) {
        if (!package) {
            continue;
        }
        const auto [place, isNew] = places.try_emplace(package->name + "@" + package->version, result.size());
        if (isNew) {
            result.push_back(std::move(*package));
        } else if (!package->isDev) {
            result[place->second].isDev = false;  // it ships, if only from this place
        }
    }
    return result;
}

}  // namespace ScanKit::NPMParser

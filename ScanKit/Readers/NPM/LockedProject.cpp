#include "ScanKit/Readers/NPM/LockedProject.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/NodeModules.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/NPM/YarnCache.h"
#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";

std::vector<PackedFile> packedFiles(std::vector<PackedPackage::File> files) {
    std::vector<PackedFile> packed;
    for (auto& [name, bytes] : files) {
        packed.push_back({std::move(name), std::move(bytes)});
    }
    return packed;
}

void enrichFromArchive(RawDependency& dependency, const std::filesystem::path& archive) {
    std::optional<PackedPackage> package = readPackedPackage(archive);
    if (!package) {
        return;
    }
    applyManifest(dependency, package->manifest);
    dependency.folder = archive;
    dependency.packedLicenses = packedFiles(std::move(package->licenseTexts));
    dependency.packedNotices = packedFiles(std::move(package->noticeTexts));
}

RawDependency dependencyOf(const LockedEntry& entry, const LockedRole& role) {
    return {.ecosystem = Ecosystem::npm,
            .name = entry.name,
            .version = entry.version,
            .source = entry.source,
            .isDev = role.isDev,
            .declared = entry.declared};
}

std::string nameAndVersion(const LockedEntry& entry) {
    return entry.version.empty() ? entry.name : entry.name + "@" + entry.version;
}

/// Whether there are packages in the node_modules of a package folder. Hidden entries are the links to programs.
bool holdsPackages(const InstalledPackage& package) {
    return package.modules && package.modules->kind == EntryKind::folder &&
           std::ranges::any_of(listPackageFolder(*package.stated.folder / modulesName),
                               [](const FolderEntry& entry) {
                                   return entry.kind == EntryKind::folder && !entry.name.starts_with('.');
                               });
}

using Known = std::unordered_map<std::string, std::size_t>;  ///< places in the project, by name, "@", version

/// Adds the packages in a node_modules folder that no entry led to.
void addBundled(const std::filesystem::path& nodeModules, bool isDev, Known& known, LockedProject& project,
                const ReadControl& control) {
    Seen seen;
    std::vector<RawDependency> bundled;
    walk(nodeModules, 1, seen, bundled, control);
    for (RawDependency& package : bundled) {
        package.isDev = isDev;
        const auto [place, isNew] =
            known.try_emplace(package.name + "@" + package.version, project.packages.size());
        if (isNew) {
            project.packages.push_back(std::move(package));
        } else if (!isDev) {
            project.packages[place->second].isDev = false;
        }
    }
}

}  // namespace

LockedProject lockedProject(const Lockfile& lockfile, const LockedPlaces& places,
                            const ReadControl& control) {
    const std::vector<LockedRole> roles = lockedRoles(lockfile);
    const LockedWays ways(lockfile);
    LockedProject project;
    std::vector<std::optional<RawDependency>> packages(lockfile.entries.size());
    std::vector<char> holdsModules(lockfile.entries.size());
    const auto isPlaced = [&](std::size_t i) {
        return places.folders[i] || (!places.archives.empty() && places.archives[i]);
    };
    const auto isListed = [&](std::size_t i) {
        const LockedEntry& entry = lockfile.entries[i];
        const bool isLeftOut = places.isInstalled && roles[i].isOptional && !isPlaced(i);
        return !entry.isOwn && !entry.isUnreadable && !isLeftOut;
    };
    forEachPackage(lockfile.entries.size(), control, [&](std::size_t i) {
        if (isListed(i)) {
            packages[i] = dependencyOf(lockfile.entries[i], roles[i]);
            if (places.folders[i]) {
                InstalledPackage installed = installedPackage(*places.folders[i], control);
                holdsModules[i] = holdsPackages(installed) ? 1 : 0;
                enrich(*packages[i], std::move(installed));
            } else if (isPlaced(i)) {
                enrichFromArchive(*packages[i], *places.archives[i]);
            }
        }
        return lockfile.entries[i].name;
    });
    Known known;
    for (std::size_t i = 0; i < packages.size(); ++i) {
        const LockedEntry& entry = lockfile.entries[i];
        if (!packages[i]) {
            std::size_t& count = entry.isUnreadable ? project.states.unreadable
                                 : entry.isOwn      ? project.states.own
                                                    : project.states.notInstalled;
            ++count;
            continue;
        }
        const auto [place, isNew] =
            known.try_emplace(packages[i]->name + "@" + packages[i]->version, project.packages.size());
        if (!isNew) {
            ++project.states.listedAlready;
            RawDependency& first = project.packages[place->second];
            first.isDev = first.isDev && packages[i]->isDev;
            // Entries that differ in their peers share one folder; the first may be one that is not there.
            if (!first.folder && packages[i]->folder) {
                packages[i]->isDev = first.isDev;
                packages[i]->way = std::move(first.way);
                first = std::move(*packages[i]);
            }
            continue;
        }
        ++project.states.listed;
        for (const std::size_t step : ways.to(i)) {
            packages[i]->way.push_back(nameAndVersion(lockfile.entries[step]));
        }
        project.packages.push_back(std::move(*packages[i]));
    }
    // What a package brings along in a node_modules of its own stands in no lockfile of these.
    for (std::size_t i = 0; i < holdsModules.size(); ++i) {
        if (holdsModules[i] != 0) {
            addBundled(*places.folders[i] / modulesName, roles[i].isDev, known, project, control);
        }
    }
    return project;
}

}  // namespace ScanKit::NPMParser

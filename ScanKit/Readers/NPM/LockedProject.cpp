#include "ScanKit/Readers/NPM/LockedProject.h"

#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Support/FileSystem.h"

#include <string>
#include <unordered_map>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

RawDependency dependencyOf(const LockedEntry& entry, const LockedRole& role,
                           const std::optional<std::filesystem::path>& folder) {
    RawDependency dependency{.ecosystem = Ecosystem::npm,
                             .name = entry.name,
                             .version = entry.version,
                             .source = entry.source,
                             .isDev = role.isDev,
                             .declared = entry.declared};
    const std::vector<FolderEntry> files = folder ? listPackageFolder(*folder) : std::vector<FolderEntry>();
    if (holdsManifest(files)) {
        enrich(dependency, *folder, files);
    }
    return dependency;
}

std::string nameAndVersion(const LockedEntry& entry) {
    return entry.version.empty() ? entry.name : entry.name + "@" + entry.version;
}

}  // namespace

LockedProject lockedProject(const Lockfile& lockfile,
                            const std::vector<std::optional<std::filesystem::path>>& folders,
                            bool isInstalled, const ReadControl& control) {
    const std::vector<LockedRole> roles = lockedRoles(lockfile);
    const LockedWays ways(lockfile);
    LockedProject project;
    std::vector<std::optional<RawDependency>> packages(lockfile.entries.size());
    const auto isListed = [&](std::size_t i) {
        const LockedEntry& entry = lockfile.entries[i];
        const bool isLeftOut = isInstalled && roles[i].isOptional && !folders[i];
        return !entry.isOwn && !entry.isUnreadable && !isLeftOut;
    };
    forEachPackage(lockfile.entries.size(), control, [&](std::size_t i) {
        if (isListed(i)) {
            packages[i] = dependencyOf(lockfile.entries[i], roles[i], folders[i]);
        }
        return lockfile.entries[i].name;
    });
    std::unordered_map<std::string, std::size_t> places;
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
            places.try_emplace(packages[i]->name + "@" + packages[i]->version, project.packages.size());
        if (!isNew) {
            ++project.states.listedAlready;
            RawDependency& known = project.packages[place->second];
            known.isDev = known.isDev && packages[i]->isDev;
            // Entries that differ in their peers share one folder; the first may be one that is not there.
            if (!known.folder && packages[i]->folder) {
                packages[i]->isDev = known.isDev;
                packages[i]->way = std::move(known.way);
                known = std::move(*packages[i]);
            }
            continue;
        }
        ++project.states.listed;
        for (const std::size_t step : ways.to(i)) {
            packages[i]->way.push_back(nameAndVersion(lockfile.entries[step]));
        }
        project.packages.push_back(std::move(*packages[i]));
    }
    return project;
}

}  // namespace ScanKit::NPMParser

#include "ScanKit/Readers/NPM/NPMParser.h"

#include "ScanKit/Readers/NPM/PackageLock.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Parallel.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

RawDependency dependencyOf(const LockedPackage& package) {
    return {.ecosystem = Ecosystem::npm,
            .name = package.name,
            .version = package.version,
            .source = package.source,
            .isDev = package.isDev,
            .declared = package.declared};
}

/// What became of an entry.
struct Outcome {
    std::optional<RawDependency> listed;
    std::size_t EntryStates::*state = &EntryStates::listed;
};

/// The package, enriched when it is installed; or why it is none to report: a link, a local package, or an optional one that
/// was left out on this system.
Outcome outcomeOf(const LockedPackage& package, const std::filesystem::path& projectFolder, bool hasModules) {
    if (package.isLink) {
        return {.state = &EntryStates::own};
    }
    std::optional<OpenFolder> folder;
    if (const auto path = hasModules ? folderBelow(projectFolder, package.installPath) : std::nullopt) {
        folder.emplace(*path);
    }
    const bool isInstalled = folder && holdsManifest(*folder);
    // Without a node_modules folder nothing is installed, which says nothing about an optional package.
    if (hasModules && !isInstalled && package.isOptional) {
        return {.state = &EntryStates::notInstalled};
    }
    RawDependency dependency = dependencyOf(package);
    if (isInstalled) {
        enrich(dependency, *folder);
    }
    // Asked after the package.json had its word: a lockfile may give a number to a package beside the project.
    if (dependency.version.starts_with("file:") || dependency.version.starts_with("link:")) {
        return {.state = &EntryStates::own};
    }
    return {.listed = std::move(dependency)};
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

std::optional<LockedProject> npmProject(std::string_view lockfile, const std::filesystem::path& projectFolder,
                                        const ReadControl& control) {
    const std::optional<PackageLock> lock = packageLock(lockfile, control);
    if (!lock) {
        return std::nullopt;
    }
    const std::vector<LockedPackage>& locked = lock->packages;
    const bool hasModules = isFolder(projectFolder / "node_modules");
    std::vector<Outcome> outcomes(locked.size());
    std::optional<LockedWays> ways;
    {
        const BackgroundWork following([&] { ways.emplace(Needs(*lock).graph()); }, control.threadLimit);
        forEachPackage(locked.size(), control, [&](std::size_t i) {
            outcomes[i] = outcomeOf(locked[i], projectFolder, hasModules);
            return outcomes[i].listed ? outcomes[i].listed->name : locked[i].installPath;
        });
    }
    LockedProject project;
    project.states.own = lock->members.size();
    project.states.unreadable = lock->leftOut;
    std::unordered_map<std::string, std::size_t> places;
    places.reserve(outcomes.size());
    project.packages.reserve(outcomes.size());
    std::vector<std::size_t> entries;  // of each package, its place in the lockfile
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
        std::optional<RawDependency>& package = outcomes[i].listed;
        if (!package) {
            ++(project.states.*outcomes[i].state);
            continue;
        }
        const auto [place, isNew] =
            places.try_emplace(package->name + "@" + package->version, project.packages.size());
        ++(isNew ? project.states.listed : project.states.listedAlready);
        if (isNew) {
            project.packages.push_back(std::move(*package));
            entries.push_back(i);
        } else if (!package->isDev) {
            project.packages[place->second].isDev = false;  // it ships, if only from this place
        }
    }
    const auto addWay = [&](std::size_t i) {
        for (const std::size_t step : ways->to(entries[i])) {
            project.packages[i].way.push_back(locked[step].name + "@" + locked[step].version);
        }
    };
    forEachIndex(entries.size(), addWay, control.stop, control.threadLimit);
    return project;
}

std::optional<std::vector<RawDependency>> dependencies(std::string_view lockfile,
                                                       const std::filesystem::path& projectFolder,
                                                       const ReadControl& control) {
    std::optional<LockedProject> project = npmProject(lockfile, projectFolder, control);
    return project ? std::optional(std::move(project->packages)) : std::nullopt;
}

}  // namespace ScanKit::NPMParser

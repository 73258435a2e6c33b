#include "ScanKit/Readers/NPM/NPMParser.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/ReportableText.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Parallel.h"
#include "ScanKit/Support/Paths.h"

#include <memory>
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

/// A package to report.
struct Listed {
    RawDependency package;
    std::string key;          ///< those with the same are one
    bool isFinished = false;  ///< has its way, and is fit for reports
};

/// What became of an entry, and what that was made of beside the entry.
struct Outcome {
    std::shared_ptr<const InstalledPackage>
        installed;                   ///< as a cache has it; null without a folder or a cache
    std::shared_ptr<Listed> listed;  ///< null when there is nothing to report
    std::size_t EntryStates::*state = &EntryStates::listed;
    bool isRepeatable = true;  ///< comes to the same for the same entry and the same `installed`
};

/// The outcomes of a lockfile's entries, for the next time that it is read.
struct Outcomes {
    std::shared_ptr<const PackageLock> lock;
    std::shared_ptr<const LockedWays> ways;
    bool hasModules = false;
    std::vector<Outcome> all;
};

/// Reads the entries of a lockfile and joins what it found.
class ProjectReading {
public:
    ProjectReading(const std::shared_ptr<const PackageLock>& lock, const std::filesystem::path& folder,
                   const ReadControl& control)
        : lock_(*lock),
          folder_(folder),
          control_(control),
          hasModules_(isFolder(folder / "node_modules")),
          outcomes_(std::make_shared<Outcomes>()) {
        outcomes_->lock = lock;
        outcomes_->hasModules = hasModules_;
        outcomes_->all.resize(lock->packages.size());
        if (control.cache != nullptr) {
            known_ = control.cache->find<Outcomes>(folder.native());
        }
        if (known_ && (known_->lock != lock || known_->hasModules != hasModules_)) {
            known_ = nullptr;
        }
        outcomes_->ways = known_ ? known_->ways : nullptr;
    }

    NPMProject project() {
        std::optional<BackgroundWork> following;
        if (!outcomes_->ways) {
            following.emplace([this] { outcomes_->ways = std::make_shared<const LockedWays>(waysOf(lock_)); },
                              control_.threadLimit);
        }
        forEachPackage(lock_.packages.size(), control_, [&](std::size_t i) {
            outcomes_->all[i] = outcomeOf(i);
            const std::shared_ptr<Listed>& listed = outcomes_->all[i].listed;
            return listed ? listed->package.name : lock_.packages[i].installPath;
        });
        following.reset();
        if (control_.stop.stop_requested()) {
            return {};
        }
        NPMProject project = joined();
        if (control_.cache != nullptr) {
            control_.cache->keep<Outcomes>(folder_.native(), {}, outcomes_);
        }
        return project;
    }

private:
    /// What becomes of an entry: the same as last time, when nothing has changed of what that was made of.
    Outcome outcomeOf(std::size_t i) const {
        const Outcome* const before = known_ ? &known_->all[i] : nullptr;
        std::shared_ptr<const InstalledPackage> installed;
        if (before != nullptr && before->installed) {
            installed = knownInstalled(*before->installed->stated.folder, *control_.cache);
        }
        if (before != nullptr && before->isRepeatable && before->installed == installed) {
            return *before;
        }
        std::optional<OpenFolder> opened;
        if (auto folder = installed ? std::nullopt : folderOf(lock_.packages[i])) {
            if (control_.cache != nullptr) {
                installed = knownInstalled(*folder, *control_.cache);
            } else {
                opened.emplace(std::move(*folder));
            }
        }
        return outcomeOf(i, std::move(installed), opened);
    }

    /// Where the package would be; absent when it is none, or nothing is installed.
    std::optional<std::filesystem::path> folderOf(const LockedPackage& package) const {
        return hasModules_ && !package.isLink ? folderBelow(folder_, package.installPath) : std::nullopt;
    }

    /// The package, enriched when it is installed, from what a cache knows of its folder or from the folder itself; or why it
    /// is none to report: a link, a local package, or an optional one that was left out on this system.
    Outcome outcomeOf(std::size_t i, std::shared_ptr<const InstalledPackage> installed,
                      const std::optional<OpenFolder>& folder) const {
        const LockedPackage& package = lock_.packages[i];
        const bool isInstalled = installed ? installed->holdsManifest : folder && holdsManifest(*folder);
        Outcome outcome{.installed = std::move(installed)};
        // Without a node_modules folder nothing is installed, which says nothing about an optional package.
        if (package.isLink || (hasModules_ && !isInstalled && package.isOptional)) {
            outcome.state = package.isLink ? &EntryStates::own : &EntryStates::notInstalled;
            return outcome;
        }
        auto listed = std::make_shared<Listed>(Listed{.package = dependencyOf(package)});
        RawDependency& dependency = listed->package;
        if (isInstalled && outcome.installed) {
            enrich(dependency, *outcome.installed);
        } else if (isInstalled) {
            enrich(dependency, *folder);
        }
        outcome.isRepeatable = !dependency.declared || !licenseFileReference(*dependency.declared);
        // Asked after the package.json had its word: a lockfile may give a number to a package beside the project.
        if (dependency.version.starts_with("file:") || dependency.version.starts_with("link:")) {
            outcome.state = &EntryStates::own;
            return outcome;
        }
        listed->key = dependency.name + "@" + dependency.version;
        outcome.listed = std::move(listed);
        return outcome;
    }

    NPMProject joined() {
        NPMProject project;
        project.states.own = lock_.members.size();
        project.states.unreadable = lock_.leftOut;
        /// The entry at which a package stands first, and whether it ships, if only from another place.
        struct First {
            std::size_t entry = 0;
            bool ships = false;
        };
        std::vector<First> firsts;
        firsts.reserve(outcomes_->all.size());
        std::unordered_map<std::string_view, std::size_t> places(outcomes_->all.size());
        for (std::size_t i = 0; i < outcomes_->all.size(); ++i) {
            const Listed* const listed = outcomes_->all[i].listed.get();
            if (listed == nullptr) {
                ++(project.states.*outcomes_->all[i].state);
                continue;
            }
            const auto [place, isNew] = places.try_emplace(listed->key, firsts.size());
            if (isNew) {
                firsts.push_back({.entry = i});
            }
            ++(isNew ? project.states.listed : project.states.listedAlready);
            firsts[place->second].ships |= !listed->package.isDev;
        }
        project.packages.resize(firsts.size());
        const auto finish = [&](std::size_t i) {
            project.packages[i] = finished(firsts[i].entry);
            if (project.packages[i]->isDev && firsts[i].ships) {
                RawDependency shipped = *project.packages[i];
                shipped.isDev = false;
                project.packages[i] = std::make_shared<const RawDependency>(std::move(shipped));
            }
        };
        forEachIndex(firsts.size(), finish, {}, control_.threadLimit);
        return project;
    }

    /// Of packages that stand in several places only the first is finished. Another scan may hold the outcomes of the last
    /// time, which stay as they are.
    std::shared_ptr<const RawDependency> finished(std::size_t i) {
        std::shared_ptr<Listed>& listed = outcomes_->all[i].listed;
        if (!listed->isFinished) {
            if (known_ && known_->all[i].listed == listed) {
                listed = std::make_shared<Listed>(*listed);
            }
            for (const std::size_t step : outcomes_->ways->to(i)) {
                listed->package.way.push_back(lock_.packages[step].name + "@" + lock_.packages[step].version);
            }
            makeReportable(listed->package);
            listed->isFinished = true;
        }
        return {listed, &listed->package};
    }

    const PackageLock& lock_;
    const std::filesystem::path& folder_;
    const ReadControl& control_;
    const bool hasModules_;
    std::shared_ptr<const Outcomes> known_;  ///< those of the last time, when they are of this lockfile
    std::shared_ptr<Outcomes> outcomes_;
};

}  // namespace

NPMProject npmProject(const std::shared_ptr<const PackageLock>& lock,
                      const std::filesystem::path& projectFolder, const ReadControl& control) {
    return ProjectReading(lock, projectFolder, control).project();
}

std::optional<std::vector<RawDependency>> dependencies(std::string_view lockfile,
                                                       const std::filesystem::path& projectFolder,
                                                       const ReadControl& control) {
    std::optional<PackageLock> lock = packageLock(lockfile, control);
    if (!lock) {
        return std::nullopt;
    }
    const auto shared = std::make_shared<const PackageLock>(std::move(*lock));
    std::vector<RawDependency> packages;
    for (const auto& package : npmProject(shared, projectFolder, control).packages) {
        packages.push_back(*package);
    }
    return packages;
}

}  // namespace ScanKit::NPMParser

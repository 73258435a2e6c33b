#include "ScanKit/Readers/NPM/NPMParser.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/ReportableText.h"
#include "ScanKit/Support/FileSystem.h"
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

/// What became of an entry, and what that was made of beside the entry.
struct Outcome {
    std::shared_ptr<const InstalledPackage> installed =
        {};                                      ///< as a cache has it; null without a folder or cache
    std::shared_ptr<RawDependency> listed = {};  ///< null when there is nothing to report
    std::string key = {};                        ///< of the listed one: those with the same are one
    std::size_t EntryStates::*state = &EntryStates::listed;
    bool isRepeatable = true;  ///< comes to the same for the same entry and the same `installed`
    bool isFinished = false;   ///< the listed one has its way, and is fit for reports
};

/// The outcomes of a lockfile's entries, for the next time that it is read.
struct Outcomes {
    std::shared_ptr<const PackageLock> lock;
    bool hasModules = false;
    std::vector<std::shared_ptr<const Outcome>> all;
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
          made_(lock->packages.size()),
          outcomes_(std::make_shared<Outcomes>()) {
        outcomes_->lock = lock;
        outcomes_->hasModules = hasModules_;
        outcomes_->all.resize(made_.size());
        if (control.cache != nullptr) {
            known_ = control.cache->find<Outcomes>(folder.native());
        }
        if (known_ && (known_->lock != lock || known_->hasModules != hasModules_)) {
            known_ = nullptr;
        }
    }

    NPMProject project() {
        forEachPackage(made_.size(), control_, [&](std::size_t i) {
            read(i);
            const std::shared_ptr<RawDependency>& listed = outcomes_->all[i]->listed;
            return listed ? listed->name : lock_.packages[i].installPath;
        });
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
    void read(std::size_t i) {
        const Outcome* const before = known_ ? known_->all[i].get() : nullptr;
        std::shared_ptr<const InstalledPackage> shared;
        if (before != nullptr && before->installed) {
            shared = knownInstalled(*before->installed->stated.folder, *control_.cache);
        }
        if (before != nullptr && before->isRepeatable && before->installed == shared) {
            outcomes_->all[i] = known_->all[i];
            return;
        }
        InstalledPackage installed;
        if (auto folder = shared ? std::nullopt : folderOf(lock_.packages[i])) {
            if (control_.cache != nullptr) {
                shared = knownInstalled(*folder, *control_.cache);
            } else {
                installed = readInstalled(std::move(*folder));
            }
        }
        made_[i] = std::make_shared<Outcome>(Outcome{.installed = shared});
        complete(*made_[i], i, shared ? *shared : std::move(installed));
        outcomes_->all[i] = made_[i];
    }

    /// Where the package would be; absent when it is none, or nothing is installed.
    std::optional<std::filesystem::path> folderOf(const LockedPackage& package) const {
        return hasModules_ && !package.isLink ? folderBelow(folder_, package.installPath) : std::nullopt;
    }

    /// Makes the package, enriched when it is installed; or says why it is none to report: a link, a local package, or an
    /// optional one that was left out on this system.
    void complete(Outcome& outcome, std::size_t i, InstalledPackage installed) const {
        const LockedPackage& package = lock_.packages[i];
        // Without a node_modules folder nothing is installed, which says nothing about an optional package.
        if (package.isLink || (hasModules_ && !installed.holdsManifest && package.isOptional)) {
            outcome.state = package.isLink ? &EntryStates::own : &EntryStates::notInstalled;
            return;
        }
        RawDependency dependency = dependencyOf(package);
        if (installed.holdsManifest) {
            enrich(dependency, std::move(installed));
            outcome.isRepeatable = !dependency.declared || !licenseFileReference(*dependency.declared);
        }
        // Asked after the package.json had its word: a lockfile may give a number to a package beside the project.
        if (dependency.version.starts_with("file:") || dependency.version.starts_with("link:")) {
            outcome.state = &EntryStates::own;
            return;
        }
        outcome.key = dependency.name + "@" + dependency.version;
        outcome.listed = std::make_shared<RawDependency>(std::move(dependency));
    }

    NPMProject joined() {
        NPMProject project;
        project.states.own = lock_.members.size();
        project.states.unreadable = lock_.leftOut;
        project.packages.reserve(made_.size());
        std::unordered_map<std::string_view, std::size_t> places(made_.size());
        for (std::size_t i = 0; i < made_.size(); ++i) {
            const Outcome& outcome = *outcomes_->all[i];
            if (!outcome.listed) {
                ++(project.states.*outcome.state);
                continue;
            }
            const auto [place, isNew] = places.try_emplace(outcome.key, project.packages.size());
            ++(isNew ? project.states.listed : project.states.listedAlready);
            if (isNew) {
                project.packages.push_back(finished(i));
            } else if (auto& first = project.packages[place->second];
                       first->isDev && !outcome.listed->isDev) {
                RawDependency shipped = *first;
                shipped.isDev = false;  // if only from this place
                first = std::make_shared<const RawDependency>(std::move(shipped));
            }
        }
        return project;
    }

    /// Of packages that stand in several places only the first is finished. Another scan may hold the outcomes of the last
    /// time, which stay as they are.
    std::shared_ptr<const RawDependency> finished(std::size_t i) {
        if (outcomes_->all[i]->isFinished) {
            return outcomes_->all[i]->listed;
        }
        if (!made_[i]) {
            made_[i] = std::make_shared<Outcome>(*outcomes_->all[i]);
            made_[i]->listed = std::make_shared<RawDependency>(*made_[i]->listed);
            outcomes_->all[i] = made_[i];
        }
        RawDependency& package = *made_[i]->listed;
        for (const std::size_t step : lock_.ways.to(i)) {
            package.way.push_back(lock_.packages[step].name + "@" + lock_.packages[step].version);
        }
        makeReportable(package);
        made_[i]->isFinished = true;
        return made_[i]->listed;
    }

    const PackageLock& lock_;
    const std::filesystem::path& folder_;
    const ReadControl& control_;
    const bool hasModules_;
    std::shared_ptr<const Outcomes> known_;       ///< those of the last time, when they are of this lockfile
    std::vector<std::shared_ptr<Outcome>> made_;  ///< this time; null where the one before stands
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

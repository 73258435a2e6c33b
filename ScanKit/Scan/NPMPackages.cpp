#include "ScanKit/Readers/NPM/BunLock.h"
#include "ScanKit/Readers/NPM/HoistedModules.h"
#include "ScanKit/Readers/NPM/LockedProject.h"
#include "ScanKit/Readers/NPM/Manifest.h"
#include "ScanKit/Readers/NPM/NPMParser.h"
#include "ScanKit/Readers/NPM/PnpmLock.h"
#include "ScanKit/Readers/NPM/PnpmModules.h"
#include "ScanKit/Readers/NPM/YarnCache.h"
#include "ScanKit/Readers/NPM/YarnLock.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Parallel.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <span>
#include <utility>

namespace ScanKit {
namespace {

using Path = std::filesystem::path;

/// A lockfile of another manager than npm, read, with what it says of the disk.
struct OtherLock {
    Lockfile lockfile;
    NPMParser::LockedPlaces places;
    std::optional<ScanWarning> warning;
};

std::vector<Path> memberFolders(const Lockfile& lockfile, const Path& folder) {
    std::vector<Path> members;
    for (const std::string& member : lockfile.members) {
        members.push_back(standardized(folder / member));
    }
    return members;
}

std::optional<OtherLock> readPnpm(const std::string& text, const Path& folder, const Reading& reading) {
    // Each takes about as long as the other.
    std::optional<Lockfile> lockfile;
    std::optional<NPMParser::PackageStore> store;
    const ReadControl control{.stop = reading.control.stop, .threadLimit = reading.control.threadLimit};
    const auto readOne = [&](std::size_t which) {
        if (which == 0) {
            lockfile = NPMParser::pnpmLock(text, NPMParser::installingPnpm(folder));
        } else {
            store = NPMParser::pnpmStore(folder, control);
        }
    };
    forEachIndex(2, readOne, reading.control.stop, reading.control.threadLimit);
    if (!lockfile || !store) {
        return std::nullopt;
    }
    auto folders = NPMParser::storedFolders(*lockfile, folder, std::move(*store), reading.control);
    return OtherLock{std::move(*lockfile), {std::move(folders), {}, isFolder(folder / "node_modules")}, {}};
}

std::optional<OtherLock> readBun(const std::string& text, const Path& folder, const Reading& reading) {
    std::optional<Lockfile> lockfile = NPMParser::bunLock(text);
    if (!lockfile) {
        return std::nullopt;
    }
    auto folders = NPMParser::bunFolders(*lockfile, folder, reading.control);
    return OtherLock{std::move(*lockfile), {std::move(folders), {}, isFolder(folder / "node_modules")}, {}};
}

std::optional<OtherLock> readYarn(const std::string& text, const Path& folder, const Reading& reading) {
    const std::optional<std::string> settings = readTextFile(folder / ".yarnrc.yml", largestLockfile);
    std::optional<Lockfile> lockfile =
        NPMParser::yarnLock(text, NPMParser::projectManifests(folder), settings.value_or(""));
    if (!lockfile) {
        return std::nullopt;
    }
    OtherLock lock{std::move(*lockfile), {}, {}};
    const bool isPacked = isRegularFile(folder / ".pnp.cjs") || isRegularFile(folder / ".pnp.loader.mjs");
    if (!isPacked || isFolder(folder / "node_modules")) {
        lock.places.folders = NPMParser::hoistedFolders(
            lock.lockfile, folder, memberFolders(lock.lockfile, folder), reading.control);
        lock.places.isInstalled = isFolder(folder / "node_modules");
        return lock;
    }
    const Path cache = folder / ".yarn" / "cache";
    lock.places.folders.resize(lock.lockfile.entries.size());
    if (isFolder(cache)) {
        lock.places.archives = NPMParser::cachedArchives(lock.lockfile, cache, reading.control);
        lock.places.isInstalled = true;
    } else {
        lock.warning = Warnings::packedPackagesElsewhere(folder, reading.root);
    }
    return lock;
}

/// The package managers whose lockfiles are read, npm's own aside.
struct ManagerRow {
    std::vector<Path> Detection::*lockfiles;
    std::string_view kind;
    std::string_view install;  ///< the command that installs a project's packages
    /// What it leaves behind in the project folder.
    std::array<std::string_view, 4> traces;
    std::optional<OtherLock> (*read)(const std::string& text, const Path& folder, const Reading& reading);
};
constexpr auto managers = std::to_array<ManagerRow>({
    {&Detection::pnpmLocks,
     "pnpm lockfile",
     "pnpm install",
     {"node_modules/.pnpm", "node_modules/.modules.yaml"},
     readPnpm},
    {&Detection::yarnLocks,
     "Yarn lockfile",
     "yarn install",
     {"node_modules/.yarn-state.yml", "node_modules/.yarn-integrity", ".pnp.cjs", ".pnp.loader.mjs"},
     readYarn},
    {&Detection::bunLocks,
     "Bun lockfile",
     "bun install",
     {"node_modules/.bun", "node_modules/.cache/.bun"},
     readBun},
});
constexpr std::array<std::string_view, 1> npmTraces{"node_modules/.package-lock.json"};

bool hasTrace(const Path& folder, std::span<const std::string_view> traces) {
    return std::ranges::any_of(traces, [&](std::string_view trace) {
        return !trace.empty() && (isRegularFile(folder / trace) || isFolder(folder / trace));
    });
}

/// The lockfiles of one folder.
struct ProjectLocks {
    std::optional<Path> npm;
    std::array<std::optional<Path>, managers.size()> others;
};

class NPMReading {
public:
    explicit NPMReading(Reading& reading) : reading_(reading) {}

    void readAll() {
        for (const Path& lockfile : reading_.detection.npmLockfiles) {
            projects_[lockfile.parent_path()].npm = lockfile;
            addToOrder(lockfile.parent_path());
        }
        for (std::size_t i = 0; i < managers.size(); ++i) {
            for (const Path& lockfile : reading_.detection.*managers[i].lockfiles) {
                projects_[lockfile.parent_path()].others[i] = lockfile;
                addToOrder(lockfile.parent_path());
            }
        }
        for (const Path& folder : order_) {
            readProject(folder, projects_[folder]);
        }
        readWhatHasNoLockfile();
    }

private:
    void addToOrder(const Path& folder) {
        if (std::ranges::find(order_, folder) == order_.end()) {
            order_.push_back(folder);
        }
    }

    /// Of several managers' lockfiles the one counts whose packages are installed; npm's where that cannot be told.
    void readProject(const Path& folder, const ProjectLocks& locks) {
        std::optional<std::size_t> chosen;
        const bool isNPMs = locks.npm && hasTrace(folder, npmTraces);
        for (std::size_t i = 0; i < managers.size() && !isNPMs; ++i) {
            if (locks.others[i] && !chosen && hasTrace(folder, managers[i].traces)) {
                chosen = i;
            }
        }
        for (std::size_t i = 0; i < managers.size() && !locks.npm; ++i) {
            if (locks.others[i] && !chosen) {
                chosen = i;
            }
        }
        const Path& read = chosen ? *locks.others[*chosen] : *locks.npm;
        if (chosen) {
            readOther(folder, read, managers[*chosen]);
        } else {
            readNPM(folder, read);
        }
        if (chosen && locks.npm) {
            reading_.warn(Warnings::lockfileSetAside(read, *locks.npm, reading_.root));
        }
        for (const std::optional<Path>& other : locks.others) {
            if (other && *other != read) {
                reading_.warn(Warnings::lockfileSetAside(read, *other, reading_.root));
            }
        }
    }

    void readNPM(const Path& folder, const Path& lockfile) {
        const auto lock = NPMParser::readPackageLock(lockfile, reading_.control);
        if (!lock) {
            reading_.warn(Warnings::dependencyFileUnreadable(lockfile, reading_.root));
            return;
        }
        NPMParser::NPMProject project = NPMParser::npmProject(lock, folder, reading_.control);
        reading_.append(std::move(project.packages));
        reading_.addLockfile(Ecosystem::npm, lockfile, "npm lockfile", project.states);
        addInstalled(folder, "npm install", isFolder(folder / "node_modules"));
    }

    void readOther(const Path& folder, const Path& lockfile, const ManagerRow& manager) {
        const std::optional<std::string> text = readTextFile(lockfile, largestLockfile);
        std::optional<OtherLock> lock = text ? manager.read(*text, folder, reading_) : std::nullopt;
        if (!lock) {
            reading_.warn(Warnings::dependencyFileUnreadable(lockfile, reading_.root));
            return;
        }
        for (const Path& member : memberFolders(lock->lockfile, folder)) {
            members_.insert(member);
        }
        NPMParser::LockedProject project =
            NPMParser::lockedProject(lock->lockfile, lock->places, reading_.control);
        reading_.append(std::move(project.packages));
        reading_.addLockfile(Ecosystem::npm, lockfile, manager.kind, project.states);
        if (lock->warning) {
            reading_.warn(std::move(*lock->warning));
        } else if (!lock->places.archives.empty()) {
            reading_.addSource(Ecosystem::npm, folder / ".yarn" / "cache", "Packed packages");
        } else {
            addInstalled(folder, manager.install, lock->places.isInstalled);
        }
    }

    void addInstalled(const Path& folder, std::string_view install, bool isInstalled) {
        if (isInstalled) {
            reading_.addSource(Ecosystem::npm, folder / "node_modules", "Installed packages");
        } else {
            reading_.warn(Warnings::npmModulesMissing(folder, reading_.root, install));
        }
    }

    void readWhatHasNoLockfile() {
        const Detection& detection = reading_.detection;
        for (const Path& modules : detection.npmModulesWithoutLock) {
            // The packages of a workspace member stand in the lockfile of its workspace.
            if (!members_.contains(standardized(modules.parent_path()))) {
                readInstalledTree(modules);
            }
        }
        for (const Path& lockfile : detection.bunBinaryLocks) {
            reading_.warn(Warnings::lockfileIsBinary(lockfile, reading_.root));
        }
        const bool hasOnlyManifests = order_.empty() && detection.npmModulesWithoutLock.empty();
        if (hasOnlyManifests && !detection.npmManifestsOnly.empty()) {
            reading_.warn(Warnings::npmPackagesNotListed(detection.npmManifestsOnly.front(), reading_.root));
        }
    }

    void readInstalledTree(const Path& modules) {
        // One for each tree: two projects may both use a package, and each report line says from where.
        NPMParser::Seen seen;
        std::vector<RawDependency> packages;
        if (isFolder(modules / ".pnpm")) {
            NPMParser::walkPnpmStore(modules, seen, packages, reading_.control);
        } else {
            NPMParser::walk(modules, 0, seen, packages, reading_.control);
        }
        reading_.append(std::move(packages));
        reading_.addSource(Ecosystem::npm, modules, "Installed packages (no lockfile)");
    }

    Reading& reading_;
    std::map<Path, ProjectLocks> projects_;
    std::vector<Path> order_;  ///< the projects' folders, as they were found
    std::set<Path> members_;   ///< folders of workspace members whose lockfile was read
};

}  // namespace

void readNPMPackages(Reading& reading) {
    NPMReading(reading).readAll();
}

}  // namespace ScanKit

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Readers/Python/PdmLock.h"
#include "ScanKit/Readers/Python/PipfileLock.h"
#include "ScanKit/Readers/Python/PyLock.h"
#include "ScanKit/Readers/Python/PythonParser.h"
#include "ScanKit/Readers/Python/RequirementFiles.h"
#include "ScanKit/Readers/Python/UvLock.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace ScanKit {
namespace {

using Path = std::filesystem::path;
using Pyproject = std::optional<std::string>;

/// The lockfiles of the managers of Python packages. Each is read from its text and, where it needs that, the pyproject.toml
/// beside it.
struct LockRow {
    std::vector<Path> Detection::*lockfiles;
    std::string_view kind;
    std::optional<Lockfile> (*read)(std::string_view text, const Pyproject& pyproject);
};
constexpr auto lockRows = std::to_array<LockRow>({
    {&Detection::poetryLocks, "Poetry lockfile", PythonParser::poetryLock},
    {&Detection::uvLocks, "uv lockfile",
     [](std::string_view text, const Pyproject&) { return PythonParser::uvLock(text); }},
    {&Detection::pdmLocks, "PDM lockfile", PythonParser::pdmLock},
    {&Detection::pipfileLocks, "Pipenv lockfile",
     [](std::string_view text, const Pyproject&) { return PythonParser::pipfileLock(text); }},
    {&Detection::pyLocks, "Python lockfile",
     [](std::string_view text, const Pyproject&) { return PythonParser::pyLock(text); }},
});

class PythonReading {
public:
    explicit PythonReading(Reading& reading) : reading_(reading) {}

    void readAll() {
        readRequirements();
        readEnvironments();
        for (const LockRow& row : lockRows) {
            for (const Path& file : reading_.detection.*row.lockfiles) {
                readLock(file, row);
            }
        }
        for (const Path& folder : sitePackages_) {
            reading_.addSource(Ecosystem::python, folder, "Installed packages");
        }
        std::vector<RawDependency> packages = PythonParser::dependencies(requirements_, installed_);
        for (RawDependency& package : packages) {
            if (const auto way = ways_.find(PythonParser::normalizedName(package.name)); way != ways_.end()) {
                package.way = way->second;
            }
        }
        reading_.append(std::move(packages));
        reading_.append(std::move(furtherVersions_));
        // With something installed, a requirement that is not has a note of its own.
        if (installed_.empty() && !requirements_.empty()) {
            reading_.warn(Warnings::pythonEnvironmentMissing());
        }
    }

private:
    void readRequirements() {
        for (PythonParser::RequirementFile& file :
             PythonParser::readRequirementFiles(reading_.detection.requirementFiles, reading_.root)) {
            if (!file.isRead) {
                reading_.warn(Warnings::dependencyFileUnreadable(file.path, reading_.root));
                continue;
            }
            std::ranges::move(file.requirements, std::back_inserter(requirements_));
            reading_.addSource(Ecosystem::python, file.path, "requirements");
        }
    }

    void readEnvironments() {
        const std::vector<Path>& environments = reading_.options.pythonEnvironments.empty()
                                                    ? reading_.detection.virtualEnvs
                                                    : reading_.options.pythonEnvironments;
        for (const Path& environment : environments) {
            std::ranges::move(PythonParser::sitePackages(environment), std::back_inserter(sitePackages_));
        }
        installed_ = PythonParser::installed(sitePackages_, reading_.control);
    }

    void readLock(const Path& file, const LockRow& row) {
        const std::optional<std::string> text = readTextFile(file, largestLockfile);
        const Pyproject pyproject = readTextFile(file.parent_path() / "pyproject.toml", largestLockfile);
        const std::optional<Lockfile> lockfile = text ? row.read(*text, pyproject) : std::nullopt;
        if (!lockfile) {
            reading_.warn(Warnings::dependencyFileUnreadable(file, reading_.root));
            return;
        }
        reading_.addLockfile(Ecosystem::python, file, row.kind, takeEntries(*lockfile));
    }

    /// Makes requirements of the entries and tells what became of each.
    EntryStates takeEntries(const Lockfile& lockfile) {
        const std::vector<LockedRole> roles = lockedRoles(lockfile);
        const LockedWays ways(lockfile);
        EntryStates states;
        for (std::size_t i = 0; i < lockfile.entries.size(); ++i) {
            const LockedEntry& entry = lockfile.entries[i];
            if (entry.isUnreadable) {
                ++states.unreadable;
            } else if (entry.isOwn) {
                ++states.own;
            } else {
                ++(states.*take(entry, roles[i], wayOf(lockfile, ways.to(i))));
            }
        }
        return states;
    }

    std::size_t EntryStates::*take(const LockedEntry& entry, const LockedRole& role,
                                   std::vector<std::string> way) {
        const std::string name = PythonParser::normalizedName(entry.name);
        const auto place = installed_.find(name);
        const bool isOther = place != installed_.end() && place->second.version != entry.version;
        const bool isAbsent = !installed_.empty() && place == installed_.end();
        // For other systems, other versions of Python, or an extra that nobody asked for.
        if ((isAbsent && role.isOptional) || (isOther && taken_.contains(name))) {
            return &EntryStates::notInstalled;
        }
        if (!taken_[name].insert(entry.version).second) {
            merge(name, role.isDev);
            return &EntryStates::listedAlready;
        }
        if (taken_[name].size() > 1 && place == installed_.end()) {
            furtherVersions_.push_back({.ecosystem = Ecosystem::python,
                                        .name = entry.name,
                                        .version = entry.version,
                                        .isDev = role.isDev,
                                        .way = std::move(way)});
            return &EntryStates::listed;
        }
        merge(entry.name, role.isDev, entry.version);
        ways_.try_emplace(name, std::move(way));
        return &EntryStates::listed;
    }

    void merge(const std::string& name, bool isDev, const std::string& version = {}) {
        requirements_.push_back({name, version.empty() ? std::nullopt : std::optional(version), isDev});
    }

    static std::vector<std::string> wayOf(const Lockfile& lockfile, const std::vector<std::size_t>& steps) {
        std::vector<std::string> way;
        for (const std::size_t step : steps) {
            const LockedEntry& entry = lockfile.entries[step];
            if (!entry.isOwn) {
                way.push_back(entry.version.empty() ? entry.name : entry.name + "@" + entry.version);
            }
        }
        return way;
    }

    Reading& reading_;
    std::vector<PythonParser::Requirement> requirements_;
    std::vector<Path> sitePackages_;
    PythonParser::InstalledPackages installed_;
    std::map<std::string, std::set<std::string>> taken_;  ///< versions of lockfiles, by normalized name
    std::map<std::string, std::vector<std::string>> ways_;
    std::vector<RawDependency> furtherVersions_;  ///< of packages that lockfiles hold in several
};

}  // namespace

void readPythonPackages(Reading& reading) {
    PythonReading(reading).readAll();
}

}  // namespace ScanKit

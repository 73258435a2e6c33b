#include "ScanKit/Readers/NPM/NPMParser.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/FileSystem.h"

#include <utility>

namespace ScanKit {
namespace {

void readNPMLockfile(Reading& reading, const std::filesystem::path& lockfile) {
    const std::filesystem::path folder = lockfile.parent_path();
    const std::optional<std::string> bytes = readFile(lockfile, largestLockfile);
    auto project = bytes ? NPMParser::npmProject(*bytes, folder, reading.control) : std::nullopt;
    if (!project) {
        reading.warn(Warnings::dependencyFileUnreadable(lockfile, reading.root));
        return;
    }
    reading.append(std::move(project->packages));
    reading.addLockfile(Ecosystem::npm, lockfile, "npm lockfile", project->states);
    if (isFolder(folder / "node_modules")) {
        reading.addSource(Ecosystem::npm, folder / "node_modules", "Installed packages");
    } else {
        reading.warn(Warnings::npmModulesMissing(folder, reading.root));
    }
}

void readInstalledTree(Reading& reading, const std::filesystem::path& modules) {
    // One for each tree: two projects may both use a package, and each report line says from where.
    NPMParser::Seen seen;
    std::vector<RawDependency> packages;
    NPMParser::walk(modules, 0, seen, packages, reading.control);
    reading.append(std::move(packages));
    reading.addSource(Ecosystem::npm, modules, "Installed packages (no lockfile)");
}

}  // namespace

void readNPMPackages(Reading& reading) {
    const Detection& detection = reading.detection;
    for (const std::filesystem::path& lockfile : detection.npmLockfiles) {
        readNPMLockfile(reading, lockfile);
    }
    for (const std::filesystem::path& modules : detection.npmModulesWithoutLock) {
        readInstalledTree(reading, modules);
    }
    const bool hasOnlyManifests = detection.npmLockfiles.empty() && detection.npmModulesWithoutLock.empty();
    if (hasOnlyManifests && !detection.npmManifestsOnly.empty()) {
        reading.warn(Warnings::npmPackagesNotListed(detection.npmManifestsOnly.front(), reading.root));
    }
}

}  // namespace ScanKit

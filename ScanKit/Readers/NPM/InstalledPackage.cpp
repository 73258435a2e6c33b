#include "ScanKit/Readers/NPM/InstalledPackage.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/OpenFolder.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view manifestName = "package.json";
constexpr std::string_view modulesName = "node_modules";

/// Takes what the package.json states, and the license and notice files. `seen` learns of what was read.
void take(RawDependency& dependency, const OpenFolder& folder, SeenFiles* seen) {
    if (const auto bytes = folder.readFile(manifestName, largestPackageDescription, seen)) {
        applyManifest(dependency, *bytes);
    }
    LicenseFiles files = findLicenseFiles(folder.path(), folder.entries());
    dependency.folder = folder.path();
    dependency.licenseFiles = std::move(files.licenses);
    dependency.noticeFiles = std::move(files.notices);
}

InstalledPackage read(const OpenFolder& folder, SeenFiles* seen) {
    InstalledPackage package{.holdsManifest = holdsManifest(folder), .stated = {.ecosystem = Ecosystem::npm}};
    if (const FolderEntry* const modules = folder.entry(modulesName)) {
        package.modules = *modules;
    }
    take(package.stated, folder, seen);
    return package;
}

/// A file that the package names itself is read before all others. It is looked for each time, for it may lie anywhere below
/// the folder.
void putNamedFileFirst(RawDependency& dependency) {
    const auto reference = dependency.declared ? licenseFileReference(*dependency.declared) : std::nullopt;
    if (const auto named = reference ? fileNamedByMetadata(*dependency.folder, *reference) : std::nullopt) {
        std::erase(dependency.licenseFiles, *named);
        dependency.licenseFiles.insert(dependency.licenseFiles.begin(), *named);
    }
}

}  // namespace

std::shared_ptr<const InstalledPackage> knownInstalled(const std::filesystem::path& path,
                                                       FileCache::Round& cache) {
    if (auto known = cache.find<InstalledPackage>(path.native())) {
        return known;
    }
    SeenFiles seen;
    const OpenFolder folder(path);
    auto package = std::make_shared<const InstalledPackage>(read(folder, &seen));
    folder.addTo(seen);
    cache.keep(path.native(), std::move(seen), package);
    return package;
}

InstalledPackage installedPackage(const std::filesystem::path& folder, const ReadControl& control) {
    return control.cache != nullptr ? *knownInstalled(folder, *control.cache)
                                    : read(OpenFolder(folder), nullptr);
}

void enrich(RawDependency& dependency, InstalledPackage package) {
    RawDependency& stated = package.stated;
    // A package that states no license leaves what its lockfile copied from the registry.
    if (stated.declared) {
        dependency.declared = std::move(stated.declared);
    }
    if (!stated.version.empty()) {
        dependency.version = std::move(stated.version);
    }
    if (!stated.name.empty()) {
        dependency.name = std::move(stated.name);
    }
    if (stated.source) {
        dependency.source = std::move(stated.source);
    }
    dependency.folder = std::move(stated.folder);
    dependency.licenseFiles = std::move(stated.licenseFiles);
    dependency.noticeFiles = std::move(stated.noticeFiles);
    putNamedFileFirst(dependency);
}

void enrich(RawDependency& dependency, const OpenFolder& folder) {
    take(dependency, folder, nullptr);
    putNamedFileFirst(dependency);
}

bool holdsManifest(const OpenFolder& folder) {
    return folder.holdsFile(manifestName);
}

}  // namespace ScanKit::NPMParser

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

InstalledPackage read(const OpenFolder& folder, SeenFiles* seen) {
    InstalledPackage package{.holdsManifest = folder.holdsFile(manifestName),
                             .stated = {.ecosystem = Ecosystem::npm, .folder = folder.path()}};
    if (const FolderEntry* const modules = folder.entry(modulesName)) {
        package.modules = *modules;
    }
    if (const auto bytes = folder.readFile(manifestName, largestPackageDescription, seen)) {
        applyManifest(package.stated, *bytes);
    }
    LicenseFiles files = findLicenseFiles(folder.path(), folder.entries());
    package.stated.licenseFiles = std::move(files.licenses);
    package.stated.noticeFiles = std::move(files.notices);
    return package;
}

/// A file that the package names itself is read before all others.
void putFirst(std::vector<std::filesystem::path>& files, const std::filesystem::path& file) {
    std::erase(files, file);
    files.insert(files.begin(), file);
}

}  // namespace

InstalledPackage readInstalled(std::filesystem::path folder) {
    return read(OpenFolder(std::move(folder)), nullptr);
}

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
    return control.cache != nullptr ? *knownInstalled(folder, *control.cache) : readInstalled(folder);
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
    // Looked for each time: what it names lies anywhere below the folder.
    if (const auto reference =
            dependency.declared ? licenseFileReference(*dependency.declared) : std::nullopt) {
        if (const auto named = fileNamedByMetadata(*dependency.folder, *reference)) {
            putFirst(dependency.licenseFiles, *named);
        }
    }
}

}  // namespace ScanKit::NPMParser

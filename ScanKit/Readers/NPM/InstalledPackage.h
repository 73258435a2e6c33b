#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"
#include "ScanKit/Support/FileSystem.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace ScanKit::NPMParser {

/// The folder of an installed package, as far as anybody asks.
struct InstalledPackage {
    bool holdsManifest = false;          ///< a package.json: only such a folder is a package
    std::optional<FolderEntry> modules;  ///< its own node_modules, whatever that is
    /// What the package.json states, and the folder with its license and notice files. Empty is what is not stated.
    RawDependency stated;
};

/// Reads a folder, given by a standardized path. One that cannot be read holds nothing.
InstalledPackage readInstalled(std::filesystem::path folder);
/// The same with a cache; while nothing changes in the folder, each round is given the same object.
std::shared_ptr<const InstalledPackage> knownInstalled(const std::filesystem::path& folder,
                                                       FileCache::Round& cache);
/// The one or the other, as the caller has a cache or not.
InstalledPackage installedPackage(const std::filesystem::path& folder, const ReadControl& control = {});

/// Completes a dependency with what its folder states. What is not stated stays as it is.
void enrich(RawDependency& dependency, InstalledPackage package);

}  // namespace ScanKit::NPMParser

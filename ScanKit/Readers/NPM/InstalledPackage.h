#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/OpenFolder.h"

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
InstalledPackage installedPackage(const std::filesystem::path& folder, const ReadControl& control = {});
/// The same with a cache; while nothing changes in the folder, each round is given the same object.
std::shared_ptr<const InstalledPackage> knownInstalled(const std::filesystem::path& folder,
                                                       FileCache::Round& cache);

/// Completes a dependency with what its folder states. What is not stated stays as it is.
void enrich(RawDependency& dependency, InstalledPackage package);
/// The same at once, of a folder that holds a manifest, for whoever needs nothing else of it.
void enrich(RawDependency& dependency, const OpenFolder& folder);
bool holdsManifest(const OpenFolder& folder);

}  // namespace ScanKit::NPMParser

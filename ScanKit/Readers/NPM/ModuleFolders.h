#pragma once

#include "ScanKit/Support/FileSystem.h"

#include <filesystem>
#include <string>
#include <vector>

/// How a node_modules folder holds packages: by their names, scoped ones one folder deeper, links among them.
namespace ScanKit::NPMParser {

/// A folder by the way that led to it, and by where it really is.
struct Place {
    std::filesystem::path folder;
    std::filesystem::path real;
};

Place placeOf(const std::filesystem::path& folder);
/// Only a link needs resolving; any other entry really lies where its parent does.
Place placeOf(const Place& parent, const FolderEntry& entry);

struct ModuleFolder {
    Place place;
    std::string name;  ///< by which the package is required: "@scope/name"
    bool isLink = false;
};

/// The package folders directly in a node_modules folder, in the order of their names. Hidden ones are left out: they hold the
/// manager's own bookkeeping and the links to programs.
std::vector<ModuleFolder> moduleFolders(const Place& nodeModules);

}  // namespace ScanKit::NPMParser

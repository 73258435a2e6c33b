#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <optional>
#include <vector>

/// Where the packages of a lockfile are installed that names no folders.
namespace ScanKit::NPMParser {

/// The folder of each entry, by its place in `entries`: in the project's node_modules or those of its workspace members, nested
/// ones down to seven levels, and in the store to which Yarn links them (node_modules/.store). Found by name and version; the
/// name is that of the package.json or, for a package that calls itself otherwise, of its folder. Of several folders the one
/// with the fewest levels above it counts, and among those the first. Absent for an entry that is not installed, for an own
/// one and for one that cannot be read. Links that lead into the project's own folders, as workspaces have them, are passed
/// over.
std::vector<std::optional<std::filesystem::path>> hoistedFolders(
    const Lockfile& lockfile, const std::filesystem::path& projectFolder,
    const std::vector<std::filesystem::path>& memberFolders, const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

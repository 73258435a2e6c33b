#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanSource.h"
#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace ScanKit::NPMParser {

/// What a lockfile comes to: its packages, and what became of each entry.
struct LockedProject {
    std::vector<RawDependency> packages;  ///< each name and version once, in the order of the entries
    EntryStates states;
};

/// The dependencies of a lockfile. `folders` has a place for each entry: where it is installed; such a package carries its
/// folder and files, and its own package.json has the last word. `isInstalled` tells whether the project's packages are
/// installed at all: then an optional package without a folder was left out on this system. A package of several entries is
/// development-only when all of them are.
LockedProject lockedProject(const Lockfile& lockfile,
                            const std::vector<std::optional<std::filesystem::path>>& folders,
                            bool isInstalled, const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

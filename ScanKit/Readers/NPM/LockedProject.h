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

/// Where the packages of a lockfile are, by the places of its entries.
struct LockedPlaces {
    std::vector<std::optional<std::filesystem::path>> folders;  ///< of unpacked packages
    std::vector<std::optional<std::filesystem::path>>
        archives;              ///< of packed ones; empty when there are none
    bool isInstalled = false;  ///< the project's packages are installed at all
};

/// The dependencies of a lockfile. An installed package carries its folder and files, and its own package.json has the last
/// word. Where packages are installed, an optional one without a place was left out on this system. A package of several
/// entries is development-only when all of them are.
LockedProject lockedProject(const Lockfile& lockfile, const LockedPlaces& places,
                            const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

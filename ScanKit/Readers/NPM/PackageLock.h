#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/ReadControl.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// npm's own lockfile: package-lock.json, or npm-shrinkwrap.json.
namespace ScanKit::NPMParser {

/// One entry of a lockfile, as it stands there. What is installed is asked of the disk later.
struct LockedPackage {
    std::string installPath;  ///< relative to the project folder: "node_modules/a/node_modules/@scope/b"
    std::string name;         ///< the alias' target for an aliased package
    std::string version;      ///< empty when the entry has none
    std::optional<std::string> source;    ///< the download address
    std::optional<std::string> declared;  ///< the license, which newer lockfiles copy from the packages
    bool isDev = false;
    bool isOptional = false;
    bool isLink = false;             ///< leads to a folder of the project, and is no package of its own
    std::vector<std::string> needs;  ///< the names that it depends on, by which its folder looks for them
};

/// What one of the project's own package folders asks for.
struct LockedMember {
    std::string path;  ///< relative to the project folder; empty for the project itself
    std::vector<std::string> shipped, development;
};

/// All that a lockfile says.
struct PackageLock {
    std::vector<LockedPackage> packages;  ///< below node_modules, by install path
    std::vector<LockedMember> members;    ///< the project and its workspace members; none in version 1
    std::size_t leftOut = 0;              ///< entries that are none, or beyond the limits of paths
};

/// Reads a lockfile of every format version: the shape tells, not the number. Absent when the bytes are no lockfile, such as
/// one with the marks of an unfinished merge. Install paths beyond 4,096 bytes, or beyond 64 MiB together, are left
/// out.
std::optional<PackageLock> packageLock(std::string_view lockfile, const ReadControl& control = {});
/// The same of the lockfile at this path; null also when that cannot be read.
std::shared_ptr<const PackageLock> readPackageLock(const std::filesystem::path& lockfile,
                                                   const ReadControl& control = {});
/// How one comes to each package, by its place in `packages`.
LockedWays waysOf(const PackageLock& lock);

}  // namespace ScanKit::NPMParser

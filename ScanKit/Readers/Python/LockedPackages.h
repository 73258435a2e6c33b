#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/Python/ProjectRequests.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit::PythonParser {

/// One entry as a format's reader finds it: what it asks for by name, not yet by place.
struct LockedPackage {
    LockedEntry entry;
    std::vector<std::string> extras = {};  ///< of an entry that stands for the package with these extras
    std::vector<PackageRequest> requests = {};
    std::map<std::string, std::vector<PackageRequest>> requestsOfExtras = {};
    std::optional<bool> ships = {};  ///< where the file says so itself, which then has the word
    bool mayBeMissing = false;       ///< behind an extra of the project, or in some environments only
};

/// An entry with these members as its name and version; unreadable when they are none. An entry may lack its version.
LockedPackage lockedPackage(const DataValue& value);
/// True of a path or an address on the local disk.
bool isLocalPath(std::string_view place);

/// Joins requests and entries. What is asked of a package under an extra belongs to who asks for that extra. Without the
/// project's requests nobody knows the ways, and each entry ships unless it says otherwise. Absent when the requests
/// multiply beyond a million, as no real ones do.
std::optional<Lockfile> joinedLockfile(std::vector<LockedPackage> packages,
                                       const std::optional<ProjectRequests>& project);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Support/FileSystem.h"

#include <filesystem>
#include <vector>

namespace ScanKit {

/// What a package folder offers as evidence of its license.
struct LicenseFiles {
    std::vector<std::filesystem::path> licenses;  ///< in the order in which they are read
    std::vector<std::filesystem::path> notices;   ///< as listed

    bool operator==(const LicenseFiles&) const = default;
};

/// Looks at the folder's own entries, never below them, and takes an entry that is a link only when it leads to
/// a regular file inside the same folder. An unreadable folder yields two empty lists.
LicenseFiles findLicenseFiles(const std::filesystem::path& packageFolder);
/// The same over a listing of the folder that the caller already has.
LicenseFiles findLicenseFiles(const std::filesystem::path& packageFolder,
                              const std::vector<FolderEntry>& entries);

}  // namespace ScanKit

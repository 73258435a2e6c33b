#pragma once

#include "ScanKit/Support/FileSystem.h"

#include <filesystem>
#include <optional>
#include <string_view>
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
/// The same over a listing that the caller already has: of the folder itself, or of its subfolder `below`, whose
/// files must lie inside the package folder like any other.
LicenseFiles findLicenseFiles(const std::filesystem::path& packageFolder,
                              const std::vector<FolderEntry>& entries, std::string_view below = {});

/// The file that package metadata names by a path relative to the package folder, as a standardized path. Absent
/// when that is no regular file or does not lie inside the package folder, links resolved.
std::optional<std::filesystem::path> fileNamedByMetadata(const std::filesystem::path& packageFolder,
                                                         std::string_view name);

}  // namespace ScanKit

#pragma once

#include <filesystem>

namespace ScanKit {

/// True when the path, links resolved, names a regular file below the folder, its own links resolved too. Whatever a
/// package names or links to passes this test before it is read: reports are handed on, and no package may pull a
/// file of its user's into them. False when anything on the way cannot be looked at.
bool isRegularFileInside(const std::filesystem::path& path, const std::filesystem::path& folder);

}  // namespace ScanKit

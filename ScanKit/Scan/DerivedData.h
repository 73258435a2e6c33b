#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace ScanKit::Scanner {

/// The "SourcePackages/checkouts" folders that the development tools keep for these projects among their build
/// products (Library/Developer/Xcode/DerivedData in the home folder), newest first. Names are those of projects
/// and workspaces without extension, compared exactly. Empty when there are no names or no such folder.
std::vector<std::filesystem::path> derivedDataCheckouts(const std::vector<std::string>& projectNames);

}  // namespace ScanKit::Scanner

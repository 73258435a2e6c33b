#pragma once

#include "ScanKit/Readers/Python/DistributionMetadata.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace ScanKit::PythonParser {

using InstalledPackages = std::map<std::string, Installed>;  ///< by normalized name

/// The site-packages folders of an environment, each real folder once, in the order found; or the folder itself
/// when it is one.
std::vector<std::filesystem::path> sitePackages(const std::filesystem::path& environment);
/// The distributions of these site-packages folders. Of those that share a normalized name the first counts.
InstalledPackages installed(const std::vector<std::filesystem::path>& sitePackages,
                            const ReadControl& control = {});

}  // namespace ScanKit::PythonParser

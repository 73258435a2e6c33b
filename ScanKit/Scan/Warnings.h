#pragma once

#include "ScanKit/Model/ScanWarning.h"

#include <filesystem>

/// The warnings of a scan, all their sentences in one place. `root` is the folder scanned: people are shown paths
/// relative to it.
namespace ScanKit::Warnings {

/// For each file whose packages are missing in the result.
ScanWarning dependencyFileUnreadable(const std::filesystem::path& file, const std::filesystem::path& root);
/// Once for a scan, however many packages are missing.
ScanWarning swiftPackagesNotCheckedOut();
/// For each npm lockfile without the packages it names; `folder` holds the lockfile.
ScanWarning npmModulesMissing(const std::filesystem::path& folder, const std::filesystem::path& root);
/// For the first package.json, when there is nothing but such files.
ScanWarning npmPackagesNotListed(const std::filesystem::path& manifest, const std::filesystem::path& root);
/// When there are requirements and nothing is installed.
ScanWarning pythonEnvironmentMissing();

}  // namespace ScanKit::Warnings

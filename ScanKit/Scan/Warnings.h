#pragma once

#include "ScanKit/Model/ScanWarning.h"

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

/// The warnings of a scan, all their sentences in one place. `root` is the folder scanned: people are shown paths
/// relative to it.
namespace ScanKit::Warnings {

/// For each file whose packages are missing in the result.
ScanWarning dependencyFileUnreadable(const std::filesystem::path& file, const std::filesystem::path& root);
/// Once for a scan, however many packages are missing.
ScanWarning swiftPackagesNotCheckedOut();
/// For each lockfile of npm packages without the packages it names; `folder` holds the lockfile, and `install` is the command
/// that installs them.
ScanWarning npmModulesMissing(const std::filesystem::path& folder, const std::filesystem::path& root,
                              std::string_view install = "npm install");
/// For each project whose packages are kept packed where no project is.
ScanWarning packedPackagesElsewhere(const std::filesystem::path& folder, const std::filesystem::path& root);
/// For the first package.json, when there is nothing but such files.
ScanWarning npmPackagesNotListed(const std::filesystem::path& manifest, const std::filesystem::path& root);
/// When there are requirements and nothing is installed.
ScanWarning pythonEnvironmentMissing();

/// For each lockfile with entries that name no package.
ScanWarning entriesUnreadable(const std::filesystem::path& lockfile, std::size_t count,
                              const std::filesystem::path& root);
/// Once for each kind of files whose packages are of an ecosystem that is not read; `packages` says which. At least one file.
ScanWarning packagesNotRead(const std::vector<std::filesystem::path>& files, std::string_view packages,
                            const std::filesystem::path& root);
/// Once, for the Package.swift files beside which nothing says which packages they lead to. At least one.
ScanWarning swiftPackagesNotResolved(const std::vector<std::filesystem::path>& manifests,
                                     const std::filesystem::path& root);
/// For each lockfile in a binary form.
ScanWarning lockfileIsBinary(const std::filesystem::path& lockfile, const std::filesystem::path& root);
/// Where two package managers left their lockfiles in one folder: `other` was not read.
ScanWarning lockfileSetAside(const std::filesystem::path& read, const std::filesystem::path& other,
                             const std::filesystem::path& root);

}  // namespace ScanKit::Warnings

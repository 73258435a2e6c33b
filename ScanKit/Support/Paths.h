#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace ScanKit {

/// The user's home folder: HOME, or the account's home folder when HOME is not set.
std::filesystem::path homeFolder();
/// Without "." and "..", without a trailing slash. No link is resolved; a relative path stays relative.
std::filesystem::path standardized(const std::filesystem::path& path);
/// The folder that a file of a project names, such as a lockfile, standardized; a slash at its start is left out. Absent when
/// it has a ".." anywhere, which could lead out of the project, or a NUL.
std::optional<std::filesystem::path> folderBelow(const std::filesystem::path& project,
                                                 const std::string& named);
/// The path from the root folder, standardized; a relative one is taken from the working folder. Standardized as it
/// stands when there is no working folder any more.
std::filesystem::path absolutePath(const std::filesystem::path& path);
/// The path as people see it: relative to `root` when it lies inside ("." for the root itself), otherwise in
/// full with the home folder written as "~". It is shown on one line: see `Text::oneLine`.
std::string displayPath(const std::filesystem::path& path, const std::filesystem::path& root);
/// The last path component as people see it, on one line; of the root folder "/".
std::string displayName(const std::filesystem::path& path);

}  // namespace ScanKit

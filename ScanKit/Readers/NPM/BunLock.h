#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

/// Bun's lockfile, bun.lock, and the packages that it installs.
namespace ScanKit::NPMParser {

/// What a lockfile of format 0, 1 or 2 says: one entry for each key, which names the place in a tree of folders
/// ("a/@scope/b": below a). What something needs and no entry holds becomes an entry that is unreadable; peers may be missing.
/// Absent when the text is no such lockfile, is larger than 32 MiB, or names more than 250,000 packages.
std::optional<Lockfile> bunLock(std::string_view text);

/// The folder of each entry, absent where none is installed or the entry is the project's own: in the store of an isolated
/// install, or in the tree of folders that the keys describe.
std::vector<std::optional<std::filesystem::path>> bunFolders(const Lockfile& lockfile,
                                                             const std::filesystem::path& projectFolder,
                                                             const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

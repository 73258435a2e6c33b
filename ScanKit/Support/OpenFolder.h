#pragma once

#include "ScanKit/Support/FileStamp.h"
#include "ScanKit/Support/FileSystem.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ScanKit {

/// A folder that stays open while files in it are read, so that the system looks for the folder once and not for each of
/// its files. Costs a descriptor as long as it lives: for one package at a time.
class OpenFolder {
public:
    /// A folder that cannot be read lists as empty.
    explicit OpenFolder(std::filesystem::path folder);
    ~OpenFolder();
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    /// What it held when it was opened, as `listPackageFolder` lists it.
    const std::vector<FolderEntry>& entries() const& { return entries_; }
    std::vector<FolderEntry> entries() && { return std::move(entries_); }
    /// The entry of this name, or null.
    const FolderEntry* entry(std::string_view name) const { return entryNamed(entries_, name); }
    bool holdsFile(std::string_view name) const;
    bool holdsFolder(std::string_view name) const;

    /// The bytes of a file that the listing holds. Absent when it is no regular file, or was a file and has since become
    /// a link, cannot be read, or is larger than `largest` bytes. `seen` learns of the file.
    std::optional<std::string> readFile(std::string_view name, std::size_t largest,
                                        SeenFiles* seen = nullptr) const;
    /// Whether a path below this folder leads to a folder, links followed.
    bool leadsToFolder(const std::string& below) const;
    /// Tells `seen` of the folder, after all that was read in it. What a link in it leads to may change without a trace
    /// in the folder, so that one with links, and one that could not be opened, is not to be relied on.
    void addTo(SeenFiles& seen) const;

private:
    std::filesystem::path path_;
    int descriptor_ = -1;
    std::vector<FolderEntry> entries_;
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Support/FileStamp.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reading folders and files that nobody vouches for: nothing here throws, blocks on a FIFO or opens a device.
namespace ScanKit {

/// What an entry is once links are followed. `other` is a FIFO, socket or device, or a link that leads nowhere.
enum class EntryKind { file, folder, other };

struct FolderEntry {
    std::string name;  ///< the bytes that open it; not necessarily valid UTF-8
    EntryKind kind = EntryKind::other;
    bool isLink = false;  ///< the entry itself is a symbolic link

    bool operator==(const FolderEntry&) const = default;
};

/// The folder's own entries, hidden ones included, sorted by name in byte order so that the same folder always
/// lists the same. Entries whose name begins with "._" and ".DS_Store" are left out. A folder that cannot be
/// read lists as empty.
std::vector<FolderEntry> listPackageFolder(const std::filesystem::path& folder);
/// The entry of this name in a listing, or null.
const FolderEntry* entryNamed(const std::vector<FolderEntry>& entries, std::string_view name);

/// Links are followed; a test that fails counts as "not there".
bool isRegularFile(const std::filesystem::path& path);
bool isFolder(const std::filesystem::path& path);
/// When the folder's or file's content was last changed; absent when that cannot be read.
std::optional<std::chrono::sys_time<std::chrono::nanoseconds>> modificationDate(
    const std::filesystem::path& path);

/// What is known of a path before it is opened. An unknown one is looked at first, since opening a device may have
/// effects of its own; one that a listing has shown to lead to a regular file is opened at once, which saves a
/// question for each of thousands of files.
enum class PathKind { unknown, regularFile };

/// The bytes of a regular file; links are followed. Absent when it is anything else, cannot be read, or is
/// larger than `largest` bytes. `seen` learns of the file.
std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t largest,
                                    PathKind known = PathKind::unknown, SeenFiles* seen = nullptr);
/// The first `count` bytes of a regular file, or all when it is shorter. Otherwise as above.
std::optional<std::string> readFileStart(const std::filesystem::path& path, std::size_t count,
                                         PathKind known = PathKind::unknown, SeenFiles* seen = nullptr);
/// The whole file as text: UTF-8, or UTF-16 where a byte-order mark says so, as some shells write it. The mark is left
/// out, each invalid part becomes U+FFFD. Absent as above.
std::optional<std::string> readTextFile(const std::filesystem::path& path, std::size_t largest);
/// The bytes as text, as `readTextFile` decodes them.
std::string decodedText(std::string bytes);

/// A number that is the same for two paths exactly when they lead to the same folder; absent when there is none.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    auto operator<=>(const FolderIdentity&) const = default;
};
std::optional<FolderIdentity> folderIdentity(const std::filesystem::path& path);

}  // namespace ScanKit

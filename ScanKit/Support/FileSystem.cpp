#include "ScanKit/Support/FileSystem.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ScanKit {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

EntryKind kindOf(mode_t mode) {
    if (S_ISREG(mode)) {
        return EntryKind::file;
    }
    return S_ISDIR(mode) ? EntryKind::folder : EntryKind::other;
}

/// Asks the system only for what the listing itself does not say: where a link leads, and the kind of an entry
/// on a file system that leaves it out.
FolderEntry entryOf(int folder, const dirent& listed) {
    FolderEntry entry{.name = listed.d_name};
    if (listed.d_type == DT_REG || listed.d_type == DT_DIR) {
        entry.kind = listed.d_type == DT_REG ? EntryKind::file : EntryKind::folder;
        return entry;
    }
    struct stat status {};
    if (listed.d_type == DT_UNKNOWN) {
        if (fstatat(folder, listed.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return entry;
        }
        entry.isLink = S_ISLNK(status.st_mode);
        entry.kind = kindOf(status.st_mode);
    } else {
        entry.isLink = listed.d_type == DT_LNK;
    }
    if (entry.isLink && fstatat(folder, listed.d_name, &status, 0) == 0) {
        entry.kind = kindOf(status.st_mode);
    }
    return entry;
}

bool isLeftOut(std::string_view name) {
    return name == "." || name == ".." || name == ".DS_Store" || name.starts_with("._");
}

/// An open file that closes itself.
class OpenFile {
public:
    /// O_NONBLOCK and the second look are for what the path might have become since the first.
    OpenFile(const std::filesystem::path& path, PathKind known) {
        if (known == PathKind::unknown && !isRegularFile(path)) {
            return;
        }
        descriptor_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        struct stat status {};
        if (descriptor_ >= 0 && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
            size_ = static_cast<std::size_t>(status.st_size);
        } else {
            closeNow();
        }
    }
    ~OpenFile() { closeNow(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    std::size_t size() const { return size_; }

    /// Up to `count` bytes from the start; absent when reading fails.
    std::optional<std::string> readStart(std::size_t count) const {
        std::string bytes;
        // One byte more than the size says, so that the read that fills the file also finds its end.
        bytes.resize(std::min(count, size_ + 1));
        std::size_t filled = 0;
        while (filled < count) {
            if (filled == bytes.size()) {
                bytes.resize(std::min(count, filled * 2));
            }
            const ssize_t got = read(descriptor_, bytes.data() + filled, bytes.size() - filled);
            // A signal, such as a resized terminal's, is no failure.
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got < 0) {
                return std::nullopt;
            }
            filled += static_cast<std::size_t>(got);
            if (got == 0 || filled == size_) {
                break;
            }
        }
        bytes.resize(filled);
        return bytes;
    }

private:
    void closeNow() {
        if (descriptor_ >= 0) {
            close(descriptor_);
            descriptor_ = -1;
        }
    }

    int descriptor_ = -1;
    std::size_t size_ = 0;
};

}  // namespace

std::vector<FolderEntry> listPackageFolder(const std::filesystem::path& folder) {
    std::vector<FolderEntry> entries;
    const auto close = [](DIR* opened) { closedir(opened); };
    const std::unique_ptr<DIR, decltype(close)> listing(opendir(folder.c_str()), close);
    if (!listing) {
        return entries;
    }
    while (const dirent* listed = readdir(listing.get())) {
        // A companion file of another system holds no text, though its name says LICENSE.
        if (!isLeftOut(listed->d_name)) {
            entries.push_back(entryOf(dirfd(listing.get()), *listed));
        }
    }
    // A file system's own order differs between two copies of a folder, and would reach the reports.
    std::ranges::sort(entries, {}, &FolderEntry::name);
    return entries;
}

const FolderEntry* entryNamed(const std::vector<FolderEntry>& entries, std::string_view name) {
    const auto found = std::ranges::lower_bound(entries, name, {}, &FolderEntry::name);
    return found != entries.end() && found->name == name ? &*found : nullptr;
}

bool isRegularFile(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool isFolder(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::optional<std::chrono::sys_time<std::chrono::nanoseconds>> modificationDate(
    const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
#ifdef __APPLE__
    const timespec changed = status.st_mtimespec;
#else
    const timespec changed = status.st_mtim;
#endif
    return std::chrono::sys_time<std::chrono::nanoseconds>{std::chrono::seconds{changed.tv_sec} +
                                                           std::chrono::nanoseconds{changed.tv_nsec}};
}

std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t largest, PathKind known) {
    const OpenFile file(path, known);
    if (!file.isOpen() || file.size() > largest) {
        return std::nullopt;
    }
    // The size was asked before; a file that grows meanwhile must not pass the limit.
    std::optional<std::string> bytes = file.readStart(largest + 1);
    if (bytes && bytes->size() > largest) {
        return std::nullopt;
    }
    return bytes;
}

std::optional<std::string> readFileStart(const std::filesystem::path& path, std::size_t count,
                                         PathKind known) {
    const OpenFile file(path, known);
    if (!file.isOpen()) {
        return std::nullopt;
    }
    return file.readStart(count);
}

std::optional<std::string> readTextFile(const std::filesystem::path& path, std::size_t largest) {
    std::optional<std::string> bytes = readFile(path, largest);
    if (!bytes) {
        return std::nullopt;
    }
    return decodedText(std::move(*bytes));
}

std::string decodedText(std::string bytes) {
    if (std::optional<std::string> text = Text::fromUTF16(bytes)) {
        return std::move(*text);
    }
    if (bytes.starts_with(byteOrderMark)) {
        bytes.erase(0, byteOrderMark.size());
    }
    return Text::validUtf8(std::move(bytes));
}

std::optional<FolderIdentity> folderIdentity(const std::filesystem::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        return std::nullopt;
    }
    return FolderIdentity{static_cast<std::uint64_t>(status.st_dev),
                          static_cast<std::uint64_t>(status.st_ino)};
}

}  // namespace ScanKit

#include "ScanKit/Support/FileSystem.h"

#include "ScanKit/Support/OpenFile.h"
#include "ScanKit/Support/OpenFolder.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace ScanKit {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

template <typename Read>
std::optional<std::string> readOpened(const std::filesystem::path& path, PathKind known, SeenFiles* seen,
                                      const Read& read) {
    std::optional<std::string> bytes;
    std::optional<FileStamp> stamp;
    if (known == PathKind::regularFile || isRegularFile(path)) {
        const OpenFile file(AT_FDCWD, path.c_str(), OpenFile::Links::followed);
        bytes = file.isOpen() ? read(file) : std::nullopt;
        stamp = bytes && seen != nullptr ? file.stamp() : std::nullopt;
    }
    if (seen != nullptr) {
        seen->add(path.string(), stamp);
    }
    return bytes;
}

}  // namespace

std::vector<FolderEntry> listPackageFolder(const std::filesystem::path& folder) {
    return OpenFolder(folder).entries();
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

std::optional<std::string> readFile(const std::filesystem::path& path, std::size_t largest, PathKind known,
                                    SeenFiles* seen) {
    return readOpened(path, known, seen, [&](const OpenFile& file) { return file.readAll(largest); });
}

std::optional<std::string> readFileStart(const std::filesystem::path& path, std::size_t count, PathKind known,
                                         SeenFiles* seen) {
    return readOpened(path, known, seen, [&](const OpenFile& file) { return file.readStart(count); });
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

#include "ScanKit/Support/OpenFolder.h"

#include "ScanKit/Support/OpenFile.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ScanKit {
namespace {

EntryKind kindOf(mode_t mode) {
    if (S_ISREG(mode)) {
        return EntryKind::file;
    }
    return S_ISDIR(mode) ? EntryKind::folder : EntryKind::other;
}

/// Asks the system only for what the listing itself does not say: where a link leads, and the kind of an entry
/// on a file system that leaves it out.
FolderEntry entryOf(int folder, const char* name, unsigned char type) {
    FolderEntry entry{.name = name};
    if (type == DT_REG || type == DT_DIR) {
        entry.kind = type == DT_REG ? EntryKind::file : EntryKind::folder;
        return entry;
    }
    struct stat status {};
    if (type == DT_UNKNOWN) {
        if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            return entry;
        }
        entry.isLink = S_ISLNK(status.st_mode);
        entry.kind = kindOf(status.st_mode);
    } else {
        entry.isLink = type == DT_LNK;
    }
    if (entry.isLink && fstatat(folder, name, &status, 0) == 0) {
        entry.kind = kindOf(status.st_mode);
    }
    return entry;
}

bool isLeftOut(std::string_view name) {
    return name == "." || name == ".." || name == ".DS_Store" || name.starts_with("._");
}

#ifdef __linux__

/// Calls `visit(name, type)` for each entry. The C library's own listing asks for the folder's kind and takes 32 KB from
/// the heap for each folder, which for thousands of small ones is most of what it costs.
template <typename Visit>
void forEachListed(int folder, const Visit& visit) {
    alignas(dirent64) std::array<char, std::size_t{32} * 1024> buffer;  // NOLINT: filled by the system
    for (;;) {
        const ssize_t filled = getdents64(folder, buffer.data(), buffer.size());
        if (filled <= 0) {
            return;
        }
        for (ssize_t at = 0; at < filled;) {
            const auto* const listed = reinterpret_cast<const dirent64*>(buffer.data() + at);
            visit(listed->d_name, listed->d_type);
            at += listed->d_reclen;
        }
    }
}

#else

template <typename Visit>
void forEachListed(int folder, const Visit& visit) {
    // The listing takes its descriptor over, and the folder's own is still needed.
    const int listed = dup(folder);
    const auto close = [](DIR* opened) { closedir(opened); };
    const std::unique_ptr<DIR, decltype(close)> listing(listed >= 0 ? fdopendir(listed) : nullptr, close);
    while (const dirent* entry = listing ? readdir(listing.get()) : nullptr) {
        visit(entry->d_name, entry->d_type);
    }
}

#endif

}  // namespace

OpenFolder::OpenFolder(std::filesystem::path folder) : path_(std::move(folder)) {
    descriptor_ = open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor_ < 0) {
        return;
    }
    forEachListed(descriptor_, [&](const char* name, unsigned char type) {
        // A companion file of another system holds no text, though its name says LICENSE.
        if (!isLeftOut(name)) {
            entries_.push_back(entryOf(descriptor_, name, type));
        }
    });
    // A file system's own order differs between two copies of a folder, and would reach the reports.
    std::ranges::sort(entries_, {}, &FolderEntry::name);
}

OpenFolder::~OpenFolder() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

bool OpenFolder::holdsFile(std::string_view name) const {
    const FolderEntry* const found = entry(name);
    return found != nullptr && found->kind == EntryKind::file;
}

bool OpenFolder::holdsFolder(std::string_view name) const {
    const FolderEntry* const found = entry(name);
    return found != nullptr && found->kind == EntryKind::folder;
}

std::optional<std::string> OpenFolder::readFile(std::string_view name, std::size_t largest,
                                                SeenFiles* seen) const {
    const FolderEntry* const found = entry(name);
    if (found == nullptr || found->kind != EntryKind::file) {
        return std::nullopt;
    }
    const OpenFile file(descriptor_, found->name.c_str(),
                        found->isLink ? OpenFile::Links::followed : OpenFile::Links::refused);
    std::optional<std::string> bytes = file.isOpen() ? file.readAll(largest) : std::nullopt;
    if (seen != nullptr) {
        seen->add((path_ / found->name).string(), bytes ? file.stamp() : std::nullopt);
    }
    return bytes;
}

bool OpenFolder::leadsToFolder(const std::string& below) const {
    struct stat status {};
    return fstatat(descriptor_, below.c_str(), &status, 0) == 0 && S_ISDIR(status.st_mode);
}

void OpenFolder::addTo(SeenFiles& seen) const {
    struct stat status {};
    const bool isTold = descriptor_ >= 0 && std::ranges::none_of(entries_, &FolderEntry::isLink) &&
                        fstat(descriptor_, &status) == 0;
    seen.add(path_.string(), isTold ? std::optional(FileStamp::of(status)) : std::nullopt);
}

}  // namespace ScanKit

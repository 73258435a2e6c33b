#include "ScanKit/Support/ZipArchive.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include <minizip/unzip.h>
#include <sys/stat.h>

namespace ScanKit {
namespace {

/// What each entry takes of the archive's list, beside its name, its extra fields and its comment.
constexpr std::size_t listedBytes = 46;
constexpr unsigned madeOnUnix = 3;
constexpr unsigned isEncrypted = 1;

bool isPlainPath(std::string_view name) {
    if (name.empty() || name.starts_with('/') || name.ends_with('/') ||
        name.find_first_of(std::string_view("\\\0", 2)) != std::string_view::npos) {
        return false;
    }
    for (const std::filesystem::path& part : std::filesystem::path(name)) {
        if (part == "..") {
            return false;
        }
    }
    return true;
}

}  // namespace

struct ZipArchive::Handle {
    explicit Handle(unzFile opened) : archive(opened) {}
    ~Handle() { unzClose(archive); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    /// What the archive's list says of the entry at which it stands; its name goes into `name`.
    std::optional<unz_file_info64> current(std::string& name) const {
        unz_file_info64 about;
        if (unzGetCurrentFileInfo64(archive, &about, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
            return std::nullopt;
        }
        name.resize(about.size_filename);
        if (unzGetCurrentFileInfo64(archive, nullptr, name.data(), name.size(), nullptr, 0, nullptr, 0) !=
            UNZ_OK) {
            return std::nullopt;
        }
        return about;
    }

    unzFile archive;
};

namespace {

bool isReadable(const unz_file_info64& about) {
    // An archive of a system that keeps no kinds of files says 0 there.
    const std::uint32_t kind = static_cast<std::uint32_t>(about.external_fa >> 16) & S_IFMT;
    const bool isOther = about.version >> 8 == madeOnUnix && kind != 0 && kind != S_IFREG;
    return !isOther && (about.flag & isEncrypted) == 0;
}

}  // namespace

ZipArchive::ZipArchive(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {}

/// Goes through the archive's list. False when it is not whole, or longer than the limits allow.
bool ZipArchive::readList() {
    std::size_t listed = 0;
    std::string name;
    int step = unzGoToFirstFile(handle_->archive);
    for (; step == UNZ_OK; step = unzGoToNextFile(handle_->archive)) {
        const auto about = handle_->current(name);
        unz64_file_pos place;
        if (!about || unzGetFilePos64(handle_->archive, &place) != UNZ_OK) {
            return false;
        }
        listed += listedBytes + about->size_filename + about->size_file_extra + about->size_file_comment;
        if (listed > ZipLimits::listBytes) {
            return false;
        }
        if (isReadable(*about) && isPlainPath(name)) {
            entries_.push_back({name, about->uncompressed_size, about->compressed_size,
                                place.pos_in_zip_directory, place.num_of_file});
        }
    }
    // Of equal names the last one stays, which an unpacking tool would leave on the disk.
    std::ranges::stable_sort(entries_, {}, &Entry::name);
    const auto repeats = std::ranges::unique(entries_.rbegin(), entries_.rend(), {}, &Entry::name);
    entries_.erase(entries_.begin(), repeats.begin().base());
    return step == UNZ_END_OF_LIST_OF_FILE;
}

ZipArchive::~ZipArchive() = default;
ZipArchive::ZipArchive(ZipArchive&&) noexcept = default;
ZipArchive& ZipArchive::operator=(ZipArchive&&) noexcept = default;

std::optional<ZipArchive> ZipArchive::open(const std::filesystem::path& path) {
    std::error_code error;
    // Only a regular file has a size; opening a FIFO would wait for its writer.
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size == 0 || size > ZipLimits::archiveBytes) {
        return std::nullopt;
    }
    const unzFile opened = unzOpen64(path.c_str());
    if (opened == nullptr) {
        return std::nullopt;
    }
    ZipArchive archive(std::make_unique<Handle>(opened));
    return archive.readList() ? std::optional(std::move(archive)) : std::nullopt;
}

const ZipArchive::Entry* ZipArchive::entryNamed(const std::string& name) const {
    const auto found = std::ranges::lower_bound(entries_, name, {}, &Entry::name);
    return found != entries_.end() && found->name == name ? &*found : nullptr;
}

std::optional<std::string> ZipArchive::read(const Entry& entry, std::size_t largest) const {
    if (entry.size > largest) {
        return std::nullopt;
    }
    std::optional<std::string> bytes = readStart(entry, entry.size);
    return bytes && bytes->size() == entry.size ? bytes : std::nullopt;
}

std::optional<std::string> ZipArchive::readStart(const Entry& entry, std::size_t count) const {
    if (entry.size > ZipLimits::freeBytes && entry.size / ZipLimits::ratio > entry.packedSize) {
        return std::nullopt;
    }
    const unz64_file_pos place{entry.place, entry.number};
    if (unzGoToFilePos64(handle_->archive, &place) != UNZ_OK ||
        unzOpenCurrentFile(handle_->archive) != UNZ_OK) {
        return std::nullopt;
    }
    std::string bytes;
    constexpr std::size_t pieceBytes = 64 << 10;
    int got = 1;
    while (got > 0 && bytes.size() < count) {
        // The size that the archive names is not believed until the bytes are there.
        const std::size_t before = bytes.size();
        const std::size_t wanted = std::min(count - before, pieceBytes);
        bytes.resize(before + wanted);
        got = unzReadCurrentFile(handle_->archive, bytes.data() + before, static_cast<unsigned>(wanted));
        bytes.resize(before + static_cast<std::size_t>(std::max(got, 0)));
    }
    // Closing compares what was read whole with its checksum.
    const bool isSound = unzCloseCurrentFile(handle_->archive) == UNZ_OK;
    return got >= 0 && isSound ? std::optional(std::move(bytes)) : std::nullopt;
}

}  // namespace ScanKit

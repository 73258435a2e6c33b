#include "ScanKit/Support/ZipArchive.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <zip.h>

namespace ScanKit {
namespace {

/// The record at the end of an archive, without the comment behind it.
constexpr std::size_t endRecordBytes = 22;
constexpr std::size_t longestComment = 65'535;
constexpr std::string_view endRecordMark("PK\x05\x06", 4);
constexpr std::string_view largeRecordMark("PK\x06\x07", 4);
constexpr std::size_t largeLocatorBytes = 20;
constexpr std::size_t offsetOfListBytes = 12;

/// The end of the file, where the list of entries is described. Empty when it cannot be read.
std::string tailOf(const std::filesystem::path& path, std::size_t size) {
    const std::size_t count = std::min(size, endRecordBytes + longestComment + largeLocatorBytes);
    std::string tail(count, '\0');
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(size - count));
    file.read(tail.data(), static_cast<std::streamsize>(count));
    return file ? tail : std::string();
}

std::size_t littleEndian(std::string_view bytes) {
    std::size_t number = 0;
    for (std::size_t i = bytes.size(); i > 0; --i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i - 1]);
    }
    return number;
}

/// Opening reads the whole list of entries into memory, so its size is looked at before. Whatever looks like an end record has
/// to be modest, since the library chooses among them; the form for archives beyond 4 GB is not taken.
bool hasModestList(std::string_view tail) {
    bool hasRecord = false;
    for (std::size_t at = tail.find(endRecordMark); at != std::string_view::npos;
         at = tail.find(endRecordMark, at + 1)) {
        if (at + endRecordBytes > tail.size()) {
            break;
        }
        const bool isLarge =
            at >= largeLocatorBytes && tail.substr(at - largeLocatorBytes).starts_with(largeRecordMark);
        if (isLarge || littleEndian(tail.substr(at + offsetOfListBytes, 4)) > ZipLimits::listBytes) {
            return false;
        }
        hasRecord = true;
    }
    return hasRecord;
}

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
    explicit Handle(zip_t* opened) : archive(opened) {}
    ~Handle() { zip_discard(archive); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    /// What stands in the list of entries; absent for an entry that is no plain file.
    std::optional<zip_stat_t> file(std::size_t place) const {
        zip_stat_t about;
        constexpr zip_uint64_t needed =
            ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
        zip_uint8_t system = 0;
        zip_uint32_t attributes = 0;
        if (zip_stat_index(archive, place, ZIP_FL_ENC_RAW, &about) != 0 || (about.valid & needed) != needed ||
            about.encryption_method != ZIP_EM_NONE ||
            zip_file_get_external_attributes(archive, place, 0, &system, &attributes) != 0) {
            return std::nullopt;
        }
        // An archive of a system that keeps no kinds of files says 0 there.
        const std::uint32_t kind = (attributes >> 16) & S_IFMT;
        if (system == ZIP_OPSYS_UNIX && kind != 0 && kind != S_IFREG) {
            return std::nullopt;
        }
        return about;
    }

    zip_t* archive;
};

ZipArchive::ZipArchive(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {
    const auto count =
        static_cast<std::size_t>(std::max<zip_int64_t>(zip_get_num_entries(handle_->archive, 0), 0));
    for (std::size_t place = 0; place < count; ++place) {
        const auto about = handle_->file(place);
        if (about && isPlainPath(about->name)) {
            entries_.push_back({about->name, static_cast<std::size_t>(about->size), place});
        }
    }
    // Of equal names the last one stays, which an unpacking tool would leave on the disk.
    std::ranges::stable_sort(entries_, {}, &Entry::name);
    const auto repeats = std::ranges::unique(entries_.rbegin(), entries_.rend(), {}, &Entry::name);
    entries_.erase(entries_.begin(), repeats.begin().base());
}

ZipArchive::~ZipArchive() = default;
ZipArchive::ZipArchive(ZipArchive&&) noexcept = default;
ZipArchive& ZipArchive::operator=(ZipArchive&&) noexcept = default;

std::optional<ZipArchive> ZipArchive::open(const std::filesystem::path& path) {
    std::error_code error;
    // Only a regular file has a size; opening a FIFO would wait for its writer.
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size == 0 || size > ZipLimits::archiveBytes || !hasModestList(tailOf(path, size))) {
        return std::nullopt;
    }
    zip_t* const opened = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    if (opened == nullptr) {
        return std::nullopt;
    }
    return ZipArchive(std::make_unique<Handle>(opened));
}

const ZipArchive::Entry* ZipArchive::entryNamed(const std::string& name) const {
    const auto found = std::ranges::lower_bound(entries_, name, {}, &Entry::name);
    return found != entries_.end() && found->name == name ? &*found : nullptr;
}

std::optional<std::string> ZipArchive::read(const Entry& entry, std::size_t largest) const {
    if (entry.size > largest) {
        return std::nullopt;
    }
    // One byte more makes the library compare what it has read with the checksum, and shows an entry that goes on.
    std::optional<std::string> bytes = readStart(entry, entry.size + 1);
    return bytes && bytes->size() == entry.size ? bytes : std::nullopt;
}

std::optional<std::string> ZipArchive::readStart(const Entry& entry, std::size_t count) const {
    const std::optional<zip_stat_t> about = handle_->file(entry.place);
    if (!about || (about->size > ZipLimits::freeBytes && about->size / ZipLimits::ratio > about->comp_size)) {
        return std::nullopt;
    }
    const auto close = [](zip_file_t* file) { zip_fclose(file); };
    const std::unique_ptr<zip_file_t, decltype(close)> file(zip_fopen_index(handle_->archive, entry.place, 0),
                                                            close);
    if (!file) {
        return std::nullopt;
    }
    std::string bytes;
    constexpr std::size_t pieceBytes = 64 << 10;
    while (bytes.size() < count) {
        // The size that the archive names is not believed until the bytes are there.
        const std::size_t before = bytes.size();
        const std::size_t wanted = std::min(count - before, pieceBytes);
        bytes.resize(before + wanted);
        const zip_int64_t got = zip_fread(file.get(), bytes.data() + before, wanted);
        if (got < 0) {
            return std::nullopt;
        }
        bytes.resize(before + static_cast<std::size_t>(got));
        if (got == 0) {
            break;
        }
    }
    return bytes;
}

}  // namespace ScanKit

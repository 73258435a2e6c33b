#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// What a zip archive may hold at most. Each lies far beyond any package, and together they keep a hostile archive from
/// filling the memory or the time.
struct ZipLimits {
    static constexpr std::size_t archiveBytes = std::size_t{1} << 30;
    /// Of the list of entries, from which their names are kept in memory; some 70,000 entries.
    static constexpr std::size_t listBytes = std::size_t{8} << 20;
    /// An entry beyond `freeBytes` may be this many times as large as what is stored of it.
    static constexpr std::size_t ratio = 200;
    static constexpr std::size_t freeBytes = std::size_t{1} << 20;
};

/// The files of one zip archive, read in place; for one thread at a time.
class ZipArchive {
public:
    struct Entry {
        std::string name;            ///< its path within the archive, as bytes
        std::size_t size = 0;        ///< in bytes, as the archive says
        std::size_t packedSize = 0;  ///< what is stored of it, in bytes
        std::uint64_t place = 0;     ///< where the archive's list speaks of it: an offset,
        std::uint64_t number = 0;    ///< and how many entries stand before it
    };

    /// Absent when the path leads to no regular file, when that is no whole archive, and beyond the limits.
    static std::optional<ZipArchive> open(const std::filesystem::path& path);

    ~ZipArchive();
    ZipArchive(ZipArchive&&) noexcept;
    ZipArchive& operator=(ZipArchive&&) noexcept;

    /// The files, sorted by name in byte order; of several of one name the last of the archive. Left out are folders, links,
    /// encrypted files, and paths that are absolute, hold ".." or a backslash, or name no file.
    const std::vector<Entry>& entries() const { return entries_; }
    /// The entry of this name, or null.
    const Entry* entryNamed(const std::string& name) const;

    /// All bytes of an entry. Absent when it holds more than `largest` bytes, more than the ratio allows, or other bytes than
    /// the archive says.
    std::optional<std::string> read(const Entry& entry, std::size_t largest) const;
    /// The first `count` bytes, or all when there are fewer. Absent beyond the ratio, or when they cannot be read.
    std::optional<std::string> readStart(const Entry& entry, std::size_t count) const;

private:
    struct Handle;
    explicit ZipArchive(std::unique_ptr<Handle> handle);
    bool readList();

    std::unique_ptr<Handle> handle_;
    std::vector<Entry> entries_;
};

}  // namespace ScanKit

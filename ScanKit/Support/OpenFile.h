#pragma once

#include "ScanKit/Support/FileStamp.h"

#include <cstddef>
#include <optional>
#include <string>

/// What the file system's readers share; nothing else in the project knows a descriptor.
namespace ScanKit {

/// A regular file, opened for reading, that closes itself. What a path might have become since somebody looked at it
/// (a FIFO, a device, a folder) is never waited for and never read.
class OpenFile {
public:
    enum class Links { followed, refused };

    /// `name` is relative to the folder that `folder` is open on (AT_FDCWD for any path).
    OpenFile(int folder, const char* name, Links links);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }
    /// In bytes, when the file was opened.
    std::size_t size() const { return size_; }

    /// What the file is by now; absent when that cannot be asked.
    std::optional<FileStamp> stamp() const;

    /// Up to `count` bytes from the start; absent when reading fails. To be called once.
    std::optional<std::string> readStart(std::size_t count) const;
    /// The whole file; absent when reading fails or it is larger than `largest` bytes, even if it has only grown so since
    /// it was opened.
    std::optional<std::string> readAll(std::size_t largest) const;

private:
    int descriptor_ = -1;
    std::size_t size_ = 0;
};

}  // namespace ScanKit

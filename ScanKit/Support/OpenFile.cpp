#include "ScanKit/Support/OpenFile.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ScanKit {

OpenFile::OpenFile(int folder, const char* name, Links links) {
    const int noLinks = links == Links::refused ? O_NOFOLLOW : 0;
    descriptor_ = openat(folder, name, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | noLinks);
    struct stat status {};
    if (descriptor_ >= 0 && fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
        size_ = static_cast<std::size_t>(status.st_size);
    } else if (descriptor_ >= 0) {
        close(descriptor_);
        descriptor_ = -1;
    }
}

OpenFile::~OpenFile() {
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

std::optional<FileStamp> OpenFile::stamp() const {
    struct stat status {};
    return fstat(descriptor_, &status) == 0 ? std::optional(FileStamp::of(status)) : std::nullopt;
}

std::optional<std::string> OpenFile::readStart(std::size_t count) const {
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

std::optional<std::string> OpenFile::readAll(std::size_t largest) const {
    if (size_ > largest) {
        return std::nullopt;
    }
    std::optional<std::string> bytes = readStart(largest + 1);
    if (bytes && bytes->size() > largest) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace ScanKit

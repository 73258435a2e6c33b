#include "ScanKit/Reports/ReportWriter.h"

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace ScanKit {
namespace {

/// The system's words for the last failure.
std::string lastReason() {
    return std::generic_category().message(errno);
}

/// A file that is written beside the one it shall replace, and removed unless it took that one's place. Its
/// name has nothing of the report's, which may already be as long as names can be.
class AsideFile {
public:
    explicit AsideFile(const std::filesystem::path& folder) {
        for (int attempt = 0; descriptor_ < 0; ++attempt) {
            path_ = folder / (".quorvane-" + std::to_string(getpid()) + "-" + std::to_string(attempt));
            descriptor_ = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
            if (descriptor_ < 0 && errno != EEXIST) {
                path_.clear();
                return;
            }
        }
    }
    ~AsideFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        if (!path_.empty()) {
            unlink(path_.c_str());
        }
    }
    AsideFile(const AsideFile&) = delete;
    AsideFile& operator=(const AsideFile&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }

    bool write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                return false;
            }
            bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
        return true;
    }

    /// Some file systems tell only here that the disk is full.
    bool flushAndClose() {
        const bool isFlushed = fsync(descriptor_) == 0;
        const int reason = errno;
        const bool isClosed = close(std::exchange(descriptor_, -1)) == 0;
        if (!isFlushed) {
            errno = reason;
        }
        return isFlushed && isClosed;
    }

    bool moveTo(const std::filesystem::path& file) {
        if (std::rename(path_.c_str(), file.c_str()) != 0) {
            return false;
        }
        path_.clear();
        return true;
    }

private:
    std::filesystem::path path_;
    int descriptor_ = -1;
};

/// Makes a renaming last through a power failure. Where a folder cannot be flushed the file is still whole,
/// so that this failing is no failure to save.
void flushFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

}  // namespace

SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder) {
    SavedReports saved;
    for (const ReportFormat& format : reportFormats()) {
        if (!contains(formats, format.bit)) {
            continue;
        }
        const std::filesystem::path file = folder / fileName(format, options.projectName);
        saved.failure = saveFile(file, format.bytes(result, options));
        if (saved.failure) {
            return saved;
        }
        saved.files.push_back(file);
        if (std::optional<std::string> warning =
                format.warning ? format.warning(result, options) : std::nullopt) {
            saved.warnings.push_back(std::move(*warning));
        }
    }
    return saved;
}

std::optional<std::string> saveFile(const std::filesystem::path& file, const std::string& bytes) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    AsideFile aside(folder);
    // The first that fails leaves the system's reason behind, and the file aside is removed.
    if (!aside.isOpen() || !aside.write(bytes) || !aside.flushAndClose() || !aside.moveTo(file)) {
        return lastReason();
    }
    flushFolder(folder);
    return std::nullopt;
}

}  // namespace ScanKit

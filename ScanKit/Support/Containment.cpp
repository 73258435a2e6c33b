#include "ScanKit/Support/Containment.h"

#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <optional>
#include <system_error>

#include <sys/stat.h>

namespace ScanKit {
namespace {

/// Whether the path is a regular file, when no part of it below the folder is a link or "..", which a few cheap
/// questions tell; absent when it takes resolving.
std::optional<bool> isFileWithoutLinks(const std::filesystem::path& path,
                                       const std::filesystem::path& folder) {
    const auto [folderEnd, first] = std::ranges::mismatch(folder, path);
    if (folderEnd != folder.end() || std::find(first, path.end(), "..") != path.end()) {
        return std::nullopt;
    }
    bool isFile = false;
    std::filesystem::path reached = folder;
    for (auto part = first; part != path.end(); ++part) {
        reached /= *part;
        struct stat status {};
        if (lstat(reached.c_str(), &status) != 0) {
            return false;
        }
        if (S_ISLNK(status.st_mode)) {
            return std::nullopt;
        }
        isFile = S_ISREG(status.st_mode);
    }
    return isFile;
}

}  // namespace

bool isRegularFileInside(const std::filesystem::path& path, const std::filesystem::path& folder) {
    if (const std::optional<bool> isFile = isFileWithoutLinks(path, folder)) {
        return *isFile;
    }
    std::error_code error;
    const std::filesystem::path realFolder = std::filesystem::canonical(folder, error);
    if (error) {
        return false;
    }
    const std::filesystem::path realPath = std::filesystem::canonical(path, error);
    if (error || !isRegularFile(realPath)) {
        return false;
    }
    const auto [folderEnd, rest] = std::ranges::mismatch(realFolder, realPath);
    return folderEnd == realFolder.end();
}

}  // namespace ScanKit

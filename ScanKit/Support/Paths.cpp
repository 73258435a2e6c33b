#include "ScanKit/Support/Paths.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <system_error>

#include <pwd.h>
#include <unistd.h>

namespace ScanKit {
namespace {

/// What follows `folder` and a slash at the start of `path`; absent when the path does not lie inside.
std::optional<std::string_view> pathBelow(std::string_view path, std::string_view folder) {
    // Only the root folder ends with a slash, and needs no further one behind it.
    if (!folder.ends_with('/')) {
        if (!path.starts_with(folder) || path.size() <= folder.size() || path[folder.size()] != '/') {
            return std::nullopt;
        }
        return path.substr(folder.size() + 1);
    }
    if (!path.starts_with(folder)) {
        return std::nullopt;
    }
    return path.substr(folder.size());
}

/// Whether a path, which may be relative, is one that putting in order leaves as it is. False of the root folder.
bool isStandardized(std::string_view path) {
    const auto isPlain = [](std::string_view part) { return !part.empty() && part != "." && part != ".."; };
    if (path.starts_with('/')) {
        path.remove_prefix(1);
    }
    std::size_t slash = path.find('/');
    for (; slash != std::string_view::npos; slash = path.find('/')) {
        if (!isPlain(path.substr(0, slash))) {
            return false;
        }
        path.remove_prefix(slash + 1);
    }
    return isPlain(path);
}

}  // namespace

std::filesystem::path homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return home;
    }
    passwd entry{};
    passwd* found = nullptr;
    char buffer[4096];
    if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr) {
        return found->pw_dir;
    }
    return "/";
}

std::filesystem::path standardized(const std::filesystem::path& path) {
    std::filesystem::path normal = path.lexically_normal();
    // Normalizing keeps a trailing slash as an empty last part. The root folder is nothing but its slash.
    if (!normal.has_filename() && normal.has_relative_path()) {
        normal = normal.parent_path();
    }
    return normal;
}

std::optional<std::filesystem::path> folderBelow(const std::filesystem::path& project,
                                                 const std::string& named) {
    if (named.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    // Nearly all paths are in order, and taking them apart would be most of what they cost.
    if (isStandardized(project.native()) && isStandardized(named) && !named.starts_with('/')) {
        return std::filesystem::path(project.native() + '/' + named);
    }
    const std::filesystem::path below = std::filesystem::path(named).relative_path();
    if (std::ranges::find(below, "..") != below.end()) {
        return std::nullopt;
    }
    return standardized(project / below);
}

std::filesystem::path absolutePath(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path.empty() ? "." : path, error);
    return standardized(error ? path : absolute);
}

std::string displayPath(const std::filesystem::path& path, const std::filesystem::path& root) {
    const std::string full = standardized(path).string();
    const std::string rootText = standardized(root).string();
    if (full == rootText) {
        return ".";
    }
    if (const auto below = pathBelow(full, rootText)) {
        return Text::oneLine(std::string(*below));
    }
    const std::string home = standardized(homeFolder()).string();
    if (full == home) {
        return "~";
    }
    // With "/" for a home, as in some containers, every path would begin with "~".
    if (const auto below = pathBelow(full, home); below && home != "/") {
        return "~/" + Text::oneLine(std::string(*below));
    }
    return Text::oneLine(full);
}

std::string displayName(const std::filesystem::path& path) {
    if (path.has_filename()) {
        return Text::oneLine(path.filename().string());
    }
    // Only a folder written with its slash takes the time of putting a path in order.
    const std::filesystem::path normal = standardized(path);
    return Text::oneLine((normal.has_filename() ? normal.filename() : normal.root_directory()).string());
}

}  // namespace ScanKit

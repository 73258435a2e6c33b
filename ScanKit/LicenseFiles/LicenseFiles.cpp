#include "ScanKit/LicenseFiles/LicenseFiles.h"

#include "ScanKit/Support/Containment.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace ScanKit {
namespace {

/// Source code and data that merely carry a license's name: license.js reads licenses, it is none.
constexpr auto ignoredExtensions = std::to_array<std::string_view>(
    {"js", "cjs", "mjs", "ts", "json", "swift", "py", "pyc", "h", "c", "m", "d"});
/// An extension may be any word up to the length of "markdown": LICENSE.apache2 is a license too.
constexpr std::size_t longestLicenseExtension = 8;

enum class Role { none, license, notice };

bool isIgnored(std::string_view extension) {
    return std::ranges::find(ignoredExtensions, extension) != ignoredExtensions.end();
}

bool namesLicense(std::string_view base) {
    return base.find("license") != std::string_view::npos || base.find("licence") != std::string_view::npos ||
           base.starts_with("copying") || base.starts_with("unlicense");
}

bool namesNotice(std::string_view base) {
    return base == "notice" || base == "notices" || base.starts_with("third_party_notices") ||
           base.starts_with("thirdpartynotices");
}

Role roleOf(std::string_view fileName) {
    const std::string name = Text::lowercased(fileName);
    // A dot at the start hides a file, and begins no extension.
    const std::size_t dot = name.rfind('.');
    const bool hasExtension = dot != std::string::npos && dot > 0;
    const std::string_view base = std::string_view(name).substr(0, hasExtension ? dot : name.size());
    const std::string_view extension = std::string_view(name).substr(hasExtension ? dot + 1 : name.size());
    if (isIgnored(extension)) {
        return Role::none;
    }
    if (namesLicense(base)) {
        // "LICENSE-3rdparty.some-generator-output" is not written for people.
        return Text::characterCount(extension) <= longestLicenseExtension ? Role::license : Role::none;
    }
    return namesNotice(base) ? Role::notice : Role::none;
}

/// Lower ranks are read first: the plain license, then its GNU form, then whatever else names one.
int rankOf(const std::filesystem::path& file) {
    const std::string name = Text::lowercased(file.filename().string());
    if (name.starts_with("license") || name.starts_with("licence")) {
        return 0;
    }
    return name.starts_with("copying") ? 1 : 2;
}

}  // namespace

LicenseFiles findLicenseFiles(const std::filesystem::path& packageFolder) {
    return findLicenseFiles(packageFolder, listPackageFolder(packageFolder));
}

LicenseFiles findLicenseFiles(const std::filesystem::path& packageFolder,
                              const std::vector<FolderEntry>& entries, std::string_view below) {
    const std::filesystem::path folder = below.empty() ? packageFolder : packageFolder / below;
    LicenseFiles found;
    for (const FolderEntry& entry : entries) {
        const Role role = entry.kind == EntryKind::file ? roleOf(entry.name) : Role::none;
        if (role == Role::none) {
            continue;
        }
        const std::filesystem::path file = folder / entry.name;
        // Only a link, of the entry or of the subfolder, can lead out of the package.
        if ((entry.isLink || !below.empty()) && !isRegularFileInside(file, packageFolder)) {
            continue;
        }
        (role == Role::license ? found.licenses : found.notices).push_back(file);
    }
    std::ranges::stable_sort(found.licenses, {},
                             rankOf);  // names of equal rank keep the listing's byte order
    return found;
}

std::optional<std::filesystem::path> fileNamedByMetadata(const std::filesystem::path& packageFolder,
                                                         std::string_view name) {
    // The system would read a name only up to its NUL, and find another file than the one named.
    if (Text::isBlank(name) || name.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    // The path that is checked is the one that is read: with ".." behind a linked folder, the path as it is written
    // names another file than the shortened one.
    const std::filesystem::path file =
        standardized(packageFolder / std::filesystem::path(name).relative_path());
    return isRegularFileInside(file, packageFolder) ? std::optional(file) : std::nullopt;
}

}  // namespace ScanKit

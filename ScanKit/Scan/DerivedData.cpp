#include "ScanKit/Scan/DerivedData.h"

#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iterator>
#include <optional>
#include <string_view>

namespace ScanKit::Scanner {
namespace {

struct Checkouts {
    std::filesystem::path folder;
    std::optional<std::chrono::sys_time<std::chrono::nanoseconds>> changed;
};

/// The tools name a project's folder after it, with a dash and a hash.
bool belongsToOneOf(std::string_view folderName, const std::vector<std::string>& projectNames) {
    return std::ranges::any_of(projectNames,
                               [&](const std::string& name) { return folderName.starts_with(name + "-"); });
}

}  // namespace

std::vector<std::filesystem::path> derivedDataCheckouts(const std::vector<std::string>& projectNames) {
    if (projectNames.empty()) {
        return {};
    }
    const std::filesystem::path derived = homeFolder() / "Library/Developer/Xcode/DerivedData";
    std::vector<Checkouts> found;
    for (const FolderEntry& entry : listPackageFolder(derived)) {
        const std::filesystem::path folder = derived / entry.name / "SourcePackages/checkouts";
        if (belongsToOneOf(entry.name, projectNames) && isFolder(folder)) {
            found.push_back({folder, modificationDate(folder)});
        }
    }
    // A date that cannot be read is absent, which compares as older than any.
    std::ranges::stable_sort(found, std::ranges::greater{}, &Checkouts::changed);
    std::vector<std::filesystem::path> folders;
    std::ranges::transform(found, std::back_inserter(folders), &Checkouts::folder);
    return folders;
}

}  // namespace ScanKit::Scanner

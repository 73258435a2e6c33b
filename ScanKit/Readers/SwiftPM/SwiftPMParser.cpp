#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Text.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::SwiftPMParser {
namespace {

using FolderIndex = std::unordered_map<std::string, std::filesystem::path>;  ///< by lower-case folder name

FolderIndex indexOf(const std::vector<std::filesystem::path>& checkoutFolders) {
    FolderIndex index;
    for (const std::filesystem::path& folder : checkoutFolders) {
        for (const FolderEntry& entry : listPackageFolder(folder)) {
            if (entry.kind == EntryKind::folder) {
                // The first folder of a name wins: the project's own checkouts come before those of older builds.
                index.try_emplace(Text::lowercased(entry.name), folder / entry.name);
            }
        }
    }
    return index;
}

std::optional<std::filesystem::path> folderOf(const Pin& pin, const FolderIndex& index) {
    for (const std::string& key :
         {pin.identity, Text::lowercased(packageName(pin.location)), Text::lowercased(pin.name)}) {
        if (const auto found = index.find(key); found != index.end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

RawDependency dependencyOf(const Pin& pin, const FolderIndex& index) {
    RawDependency dependency{.ecosystem = Ecosystem::swiftpm,
                             .name = pin.name,
                             .version = pin.displayVersion(),
                             .folder = folderOf(pin, index)};
    if (!Text::isBlank(pin.location)) {
        dependency.source = pin.location;
    }
    return dependency;
}

}  // namespace

std::vector<RawDependency> dependencies(const std::vector<Pin>& pins,
                                        const std::vector<std::filesystem::path>& checkoutFolders,
                                        const ReadControl& control) {
    const FolderIndex index = indexOf(checkoutFolders);
    std::unordered_set<std::string_view> identities;
    std::vector<RawDependency> result;
    for (const Pin& pin : pins) {
        if (identities.insert(pin.identity).second) {
            result.push_back(dependencyOf(pin, index));
        }
    }
    forEachPackage(result.size(), control, [&](std::size_t i) {
        RawDependency& dependency = result[i];
        if (dependency.folder) {
            LicenseFiles files = findLicenseFiles(*dependency.folder);
            dependency.licenseFiles = std::move(files.licenses);
            dependency.noticeFiles = std::move(files.notices);
        }
        return dependency.name;
    });
    return result;
}

}  // namespace ScanKit::SwiftPMParser

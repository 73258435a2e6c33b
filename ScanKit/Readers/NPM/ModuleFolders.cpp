#include "ScanKit/Readers/NPM/ModuleFolders.h"

#include "ScanKit/Support/Paths.h"

#include <system_error>

namespace ScanKit::NPMParser {
namespace {

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

}  // namespace

Place placeOf(const std::filesystem::path& folder) {
    return {standardized(folder), resolved(folder)};
}

Place placeOf(const Place& parent, const FolderEntry& entry) {
    Place place{parent.folder / entry.name, parent.real / entry.name};
    if (entry.isLink) {
        place.real = resolved(place.folder);
    }
    return place;
}

std::vector<ModuleFolder> moduleFolders(const Place& nodeModules) {
    std::vector<ModuleFolder> folders;
    for (const FolderEntry& entry : listPackageFolder(nodeModules.folder)) {
        if (entry.kind != EntryKind::folder || entry.name.starts_with('.')) {
            continue;
        }
        const Place place = placeOf(nodeModules, entry);
        if (!entry.name.starts_with('@')) {
            folders.push_back({place, entry.name, entry.isLink});
            continue;
        }
        for (const FolderEntry& scoped : listPackageFolder(place.folder)) {
            if (scoped.kind == EntryKind::folder) {
                folders.push_back({placeOf(place, scoped), entry.name + "/" + scoped.name, scoped.isLink});
            }
        }
    }
    return folders;
}

}  // namespace ScanKit::NPMParser

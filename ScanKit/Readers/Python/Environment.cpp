#include "ScanKit/Readers/Python/Environment.h"

#include "ScanKit/Readers/Python/PackageName.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"

#include <set>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

std::vector<std::filesystem::path> metadataFolders(const std::vector<std::filesystem::path>& sitePackages) {
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path& site : sitePackages) {
        for (const FolderEntry& entry : listPackageFolder(site)) {
            const std::filesystem::path extension = std::filesystem::path(entry.name).extension();
            if (entry.kind == EntryKind::folder && (extension == ".dist-info" || extension == ".egg-info")) {
                folders.push_back(site / entry.name);
            }
        }
    }
    return folders;
}

}  // namespace

std::vector<std::filesystem::path> sitePackages(const std::filesystem::path& environment) {
    const std::filesystem::path name = standardized(environment).filename();
    if (name == "site-packages" || name == "dist-packages") {
        return {environment};
    }
    std::vector<std::filesystem::path> found;
    std::set<FolderIdentity> identities;
    const auto add = [&](const std::filesystem::path& folder) {
        const std::optional<FolderIdentity> identity = folderIdentity(folder);
        if (identity && identities.insert(*identity).second) {
            found.push_back(folder);
        }
    };
    // On a file system that ignores letter case "lib" and "Lib" are one folder: its identity tells.
    for (const char* below : {"lib", "Lib", "lib/python"}) {
        const std::filesystem::path base = environment / below;
        add(base / "site-packages");
        for (const FolderEntry& entry : listPackageFolder(base)) {
            if (entry.name.starts_with("python")) {
                add(base / entry.name / "site-packages");
            }
        }
    }
    return found;
}

InstalledPackages installed(const std::vector<std::filesystem::path>& sitePackages,
                            const ReadControl& control) {
    const std::vector<std::filesystem::path> folders = metadataFolders(sitePackages);
    std::vector<std::optional<Installed>> distributions(folders.size());
    forEachPackage(folders.size(), control, [&](std::size_t i) {
        distributions[i] = distribution(folders[i]);
        return distributions[i] ? distributions[i]->name : displayName(folders[i]);
    });
    InstalledPackages packages;
    for (std::optional<Installed>& one : distributions) {
        if (one) {
            // The first environment wins, as it does when Python looks for a module.
            packages.try_emplace(normalizedName(one->name), std::move(*one));
        }
    }
    return packages;
}

}  // namespace ScanKit::PythonParser

#include "ScanKit/Readers/NPM/PackageStore.h"

#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/OpenFolder.h"
#include "ScanKit/Support/Paths.h"

#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";

bool isLocal(std::string_view storeFolder) {
    return storeFolder.starts_with("file+") || storeFolder.find("@file+") != std::string_view::npos;
}

/// Name and version in the name of a store's folder: "@scope+name@1.0.0_peers"; empty when it says no version.
PackageIdentity identityOf(std::string_view folder) {
    const std::size_t at = folder.find('@', 1);
    if (at == std::string_view::npos || at + 1 == folder.size() || folder[at + 1] < '0' ||
        folder[at + 1] > '9') {
        return {};
    }
    PackageIdentity identity{.name = std::string(folder.substr(0, at)),
                             .version = std::string(folder.substr(at + 1, folder.find('_', at) - at - 1))};
    if (const std::size_t plus = identity.name.find('+'); plus != std::string::npos) {
        // No name holds a plus sign; elsewhere than behind a scope it stands for the slash of an address.
        if (!identity.name.starts_with('@') || identity.name.find('+', plus + 1) != std::string::npos) {
            return {};
        }
        identity.name[plus] = '/';
    }
    return identity;
}

/// Where a folder of the store keeps the package of this name. One text, since a path takes each of its parts apart.
std::filesystem::path placeIn(const std::filesystem::path& store, std::string_view folder,
                              std::string_view package) {
    std::string place = store.native();
    place.append("/").append(folder).append("/node_modules/").append(package);
    return place;
}

/// The package of a store's folder: what lies there itself and is no link to another.
std::optional<std::filesystem::path> ownPackage(const std::filesystem::path& modules) {
    for (const FolderEntry& entry : listPackageFolder(modules)) {
        if (entry.kind != EntryKind::folder || entry.isLink || entry.name.starts_with('.')) {
            continue;
        }
        if (!entry.name.starts_with('@')) {
            return modules / entry.name;
        }
        for (const FolderEntry& scoped : listPackageFolder(modules / entry.name)) {
            if (scoped.kind == EntryKind::folder && !scoped.isLink) {
                return modules / entry.name / scoped.name;
            }
        }
    }
    return std::nullopt;
}

}  // namespace

PackageIdentity packageIdentity(const std::filesystem::path& folder) {
    thread_local JSONReader reader;
    const auto bytes = readFile(folder / "package.json", largestPackageDescription);
    const std::optional<JSONValue> manifest = bytes ? reader.read(*bytes) : std::nullopt;
    if (!manifest) {
        return {};
    }
    return {.name = std::string(manifest->stringMember("name").value_or("")),
            .version = std::string(manifest->stringMember("version").value_or(""))};
}

PackageStore::PackageStore(const std::filesystem::path& store, const ReadControl& control)
    : store_(standardized(store)) {
    const OpenFolder opened(store_);
    for (const FolderEntry& entry : opened.entries()) {
        // A folder node_modules holds links to all that is in the store.
        if (entry.kind != EntryKind::folder || entry.name == modulesName || isLocal(entry.name)) {
            continue;
        }
        PackageIdentity identity = identityOf(entry.name);
        if (!identity.name.empty()) {
            places_[identity.name + "@" + identity.version].push_back(folders_.size());
            // Bun puts a sum of the peers behind a plus sign, where a version may have one of its own.
            if (const std::size_t plus = identity.version.rfind('+'); plus != std::string::npos) {
                places_[identity.name + "@" + identity.version.substr(0, plus)].push_back(folders_.size());
            }
        }
        folders_.push_back({.name = entry.name,
                            .package = std::move(identity.name),
                            .version = std::move(identity.version)});
    }
    const auto look = [&](std::size_t i) {
        Folder& folder = folders_[i];
        folder.isThere =
            !folder.package.empty() && opened.leadsToFolder(folder.name + "/node_modules/" + folder.package);
    };
    forEachIndex(folders_.size(), look, control.stop, control.threadLimit);
}

std::optional<std::filesystem::path> PackageStore::find(const std::string& name, const std::string& version) {
    std::optional<std::filesystem::path> found;
    const auto places = places_.find(name + "@" + version);
    for (const std::size_t place : places != places_.end() ? places->second : std::vector<std::size_t>{}) {
        if (found || folders_[place].isThere) {
            folders_[place].isUsed = true;
            found = found ? found : placeIn(store_, folders_[place].name, name);
        }
    }
    return found;
}

std::vector<std::filesystem::path> PackageStore::unused(const ReadControl& control) const {
    std::vector<const Folder*> folders;
    for (const Folder& folder : folders_) {
        if (!folder.isUsed) {
            folders.push_back(&folder);
        }
    }
    return packagesIn(folders, control);
}

std::vector<std::filesystem::path> PackageStore::packages(const ReadControl& control) const {
    std::vector<const Folder*> folders;
    for (const Folder& folder : folders_) {
        folders.push_back(&folder);
    }
    return packagesIn(folders, control);
}

std::vector<std::filesystem::path> PackageStore::packagesIn(const std::vector<const Folder*>& folders,
                                                            const ReadControl& control) const {
    std::vector<std::optional<std::filesystem::path>> found(folders.size());
    const auto look = [&](std::size_t i) {
        const std::filesystem::path modules = store_ / folders[i]->name / modulesName;
        if (folders[i]->isThere) {
            found[i] = modules / folders[i]->package;
        } else {
            found[i] = ownPackage(modules);
        }
    };
    forEachIndex(folders.size(), look, control.stop, control.threadLimit);
    std::vector<std::filesystem::path> packages;
    for (std::optional<std::filesystem::path>& folder : found) {
        if (folder) {
            packages.push_back(std::move(*folder));
        }
    }
    return packages;
}

}  // namespace ScanKit::NPMParser

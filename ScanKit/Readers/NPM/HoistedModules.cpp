#include "ScanKit/Readers/NPM/HoistedModules.h"

#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";
constexpr std::string_view storeName = ".store";
/// As deep as a tree without lockfile is walked.
constexpr int deepestLevel = 7;

/// A folder by the way that led to it, and by where it really is.
struct Place {
    std::filesystem::path folder;
    std::filesystem::path real;
};

/// A package folder: found first, read later.
struct Installed {
    Place place;
    std::string folderName;  ///< with the scope: what the package is required by; empty in the store
    std::string name = {};   ///< of its package.json; empty when it has none
    std::string version = {};
    std::vector<Installed> nested = {};
};

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

Place placeOf(const Place& parent, const FolderEntry& entry) {
    Place place{parent.folder / entry.name, parent.real / entry.name};
    if (entry.isLink) {
        place.real = resolved(place.folder);
    }
    return place;
}

/// Walks what is installed for one project.
class Walk {
public:
    explicit Walk(const std::filesystem::path& projectFolder) : project_(resolved(projectFolder)) {}

    void addModules(const std::filesystem::path& packageFolder, std::vector<Installed>& found) const {
        const std::filesystem::path modules = standardized(packageFolder) / modulesName;
        for (Installed& package : packagesIn({modules, resolved(modules)})) {
            found.push_back(std::move(package));
        }
    }

    void addStore(const std::filesystem::path& packageFolder, std::vector<Installed>& found) const {
        const std::filesystem::path store = standardized(packageFolder) / modulesName / storeName;
        const Place place{store, resolved(store)};
        for (const FolderEntry& entry : listPackageFolder(store)) {
            if (entry.kind == EntryKind::folder) {
                const Place kept = placeOf(place, entry);
                found.push_back(
                    {.place = {kept.folder / "package", kept.real / "package"}, .folderName = {}});
            }
        }
    }

    void read(Installed& package, bool hasRoomBelow) const {
        thread_local JSONReader reader;  // keeps its buffers from package to package
        const auto bytes = readFile(package.place.folder / "package.json", largestPackageDescription);
        const std::optional<JSONValue> manifest = bytes ? reader.read(*bytes) : std::nullopt;
        if (manifest) {
            package.name = manifest->stringMember("name").value_or(package.folderName);
            package.version = manifest->stringMember("version").value_or("");
        }
        if (bytes && hasRoomBelow) {
            package.nested =
                packagesIn({package.place.folder / modulesName, package.place.real / modulesName});
        }
    }

private:
    std::vector<Installed> packagesIn(const Place& modules) const {
        std::vector<Installed> packages;
        for (const FolderEntry& entry : listPackageFolder(modules.folder)) {
            if (entry.kind != EntryKind::folder || entry.name.starts_with('.')) {
                continue;
            }
            const Place place = placeOf(modules, entry);
            if (!entry.name.starts_with('@')) {
                add(packages, entry, place, entry.name);
                continue;
            }
            for (const FolderEntry& scoped : listPackageFolder(place.folder)) {
                if (scoped.kind == EntryKind::folder) {
                    add(packages, scoped, placeOf(place, scoped), entry.name + "/" + scoped.name);
                }
            }
        }
        return packages;
    }

    void add(std::vector<Installed>& packages, const FolderEntry& entry, const Place& place,
             std::string folderName) const {
        if (!entry.isLink || !isOwnFolder(place.real)) {
            packages.push_back({.place = place, .folderName = std::move(folderName)});
        }
    }

    /// A folder of the project that no installer made.
    bool isOwnFolder(const std::filesystem::path& real) const {
        const std::filesystem::path below = real.lexically_relative(project_);
        return !below.empty() && *below.begin() != ".." &&
               std::ranges::find(below, modulesName) == below.end();
    }

    std::filesystem::path project_;
};

/// The folders by the names and versions of their packages.
class Places {
public:
    void add(const Installed& package) {
        if (package.name.empty() && package.folderName.empty()) {
            return;
        }
        const bool isNamedAlike = package.name == package.folderName;
        (isNamedAlike ? alike_ : byPackage_)
            .try_emplace(key(package.name, package.version), package.place.folder);
        if (!isNamedAlike) {
            byFolder_.try_emplace(key(package.folderName, package.version), package.place.folder);
        }
    }

    /// A package that calls itself as its folder does is taken before one that stands under another name, an alias.
    std::optional<std::filesystem::path> find(const LockedEntry& entry) const {
        for (const auto* places : {&alike_, &byPackage_, &byFolder_}) {
            if (const auto found = places->find(key(entry.name, entry.version)); found != places->end()) {
                return found->second;
            }
        }
        return std::nullopt;
    }

private:
    static std::string key(const std::string& name, const std::string& version) {
        return name + "@" + version;
    }

    std::unordered_map<std::string, std::filesystem::path> alike_;
    std::unordered_map<std::string, std::filesystem::path> byPackage_;
    std::unordered_map<std::string, std::filesystem::path> byFolder_;
};

}  // namespace

std::vector<std::optional<std::filesystem::path>> hoistedFolders(
    const Lockfile& lockfile, const std::filesystem::path& projectFolder,
    const std::vector<std::filesystem::path>& memberFolders, const ReadControl& control) {
    const Walk walk(projectFolder);
    std::vector<Installed> level;
    walk.addModules(projectFolder, level);
    for (const std::filesystem::path& member : memberFolders) {
        walk.addModules(member, level);
    }
    walk.addStore(projectFolder, level);
    Places places;
    std::unordered_set<std::string> seen;
    for (int depth = 0; !level.empty(); ++depth) {
        std::erase_if(level, [&](const Installed& package) {
            return !seen.insert(package.place.real.string()).second;
        });
        const auto read = [&](std::size_t i) { walk.read(level[i], depth < deepestLevel); };
        forEachIndex(level.size(), read, control.stop, control.threadLimit);
        std::vector<Installed> next;
        for (Installed& package : level) {
            places.add(package);
            std::ranges::move(package.nested, std::back_inserter(next));
        }
        level = std::move(next);
    }
    std::vector<std::optional<std::filesystem::path>> folders;
    for (const LockedEntry& entry : lockfile.entries) {
        folders.push_back(entry.isOwn || entry.isUnreadable ? std::nullopt : places.find(entry));
    }
    return folders;
}

}  // namespace ScanKit::NPMParser

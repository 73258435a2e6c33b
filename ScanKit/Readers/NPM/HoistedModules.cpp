#include "ScanKit/Readers/NPM/HoistedModules.h"

#include "ScanKit/Readers/NPM/ModuleFolders.h"
#include "ScanKit/Readers/NPM/PackageStore.h"
#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesName = "node_modules";
constexpr std::string_view storeName = ".store";
/// As deep as a tree without lockfile is walked.
constexpr int deepestLevel = 7;

/// A package folder: found first, read later.
struct Installed {
    Place place;
    std::string folderName = {};  ///< what the package is required by; empty in the store
    PackageIdentity identity = {};
    std::vector<Installed> nested = {};
};

/// Walks what is installed for one project.
class Walk {
public:
    explicit Walk(const std::filesystem::path& projectFolder) : project_(placeOf(projectFolder).real) {}

    void addModules(const Place& modules, std::vector<Installed>& found) const {
        for (ModuleFolder& folder : moduleFolders(modules)) {
            if (!folder.isLink || !isOwnFolder(folder.place.real)) {
                found.push_back({.place = std::move(folder.place), .folderName = std::move(folder.name)});
            }
        }
    }

    void addStore(const Place& store, std::vector<Installed>& found) const {
        for (const FolderEntry& entry : listPackageFolder(store.folder)) {
            if (entry.kind == EntryKind::folder) {
                const Place kept = placeOf(store, entry);
                found.push_back({.place = {kept.folder / "package", kept.real / "package"}});
            }
        }
    }

    void read(Installed& package, bool hasRoomBelow) const {
        package.identity = packageIdentity(package.place.folder);
        if (package.identity.name.empty()) {
            package.identity.name = package.folderName;
        }
        if (hasRoomBelow) {
            addModules({package.place.folder / modulesName, package.place.real / modulesName},
                       package.nested);
        }
    }

private:
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
        const PackageIdentity& identity = package.identity;
        const bool isNamedAlike = identity.name == package.folderName;
        (isNamedAlike ? alike_ : byPackage_)
            .try_emplace(key(identity.name, identity.version), package.place.folder);
        if (!isNamedAlike) {
            byFolder_.try_emplace(key(package.folderName, identity.version), package.place.folder);
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
    const std::filesystem::path modules = projectFolder / modulesName;
    walk.addModules(placeOf(modules), level);
    for (const std::filesystem::path& member : memberFolders) {
        walk.addModules(placeOf(member / modulesName), level);
    }
    walk.addStore(placeOf(modules / storeName), level);
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

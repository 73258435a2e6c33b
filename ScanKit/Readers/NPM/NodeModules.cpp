#include "ScanKit/Readers/NPM/NodeModules.h"

#include "ScanKit/Readers/NPM/InstalledPackage.h"
#include "ScanKit/Readers/NPM/ModuleFolders.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

/// Deeper nesting is not met in real trees; a tree without end stops here.
constexpr int deepestLevel = 7;

/// One package folder of the tree: found first, read later.
struct Package {
    Place place;
    std::optional<RawDependency> dependency = {};  ///< absent when the folder turned out to be no package
    std::vector<Package> nested = {};
};

std::vector<Package> packagesIn(const Place& nodeModules) {
    std::vector<Package> packages;
    for (ModuleFolder& folder : moduleFolders(nodeModules)) {
        packages.push_back({std::move(folder.place)});
    }
    return packages;
}

void readPackage(Package& package, bool hasRoomBelow, const ReadControl& control) {
    InstalledPackage installed = installedPackage(package.place.folder, control);
    if (!installed.holdsManifest) {
        return;
    }
    if (hasRoomBelow && installed.modules && installed.modules->kind == EntryKind::folder) {
        package.nested = packagesIn(placeOf(package.place, *installed.modules));
    }
    package.dependency = {.ecosystem = Ecosystem::npm, .name = displayName(package.place.folder)};
    enrich(*package.dependency, std::move(installed));
}

/// Drops the packages whose real folder was met before, and puts the others on the level to be read.
void takeUnseen(std::vector<Package>& packages, Seen& seen, std::vector<Package*>& level) {
    std::erase_if(packages, [&](const Package& package) {
        return !seen.folders.insert(package.place.real.string()).second;
    });
    for (Package& package : packages) {
        level.push_back(&package);
    }
}

/// Where a name and version stand twice, the place that comes first in the tree is reported.
void collect(std::vector<Package>& packages, Seen& seen, std::vector<RawDependency>& result) {
    for (Package& package : packages) {
        if (package.dependency &&
            seen.packages.insert(package.dependency->name + "@" + package.dependency->version).second) {
            result.push_back(std::move(*package.dependency));
        }
        collect(package.nested, seen, result);
    }
}

/// Reads level by level, so that all packages of a level are read in parallel, and puts them together in the
/// order of the tree.
void readTree(std::vector<Package> top, int depth, Seen& seen, std::vector<RawDependency>& result,
              const ReadControl& control) {
    std::vector<Package*> level;
    takeUnseen(top, seen, level);
    for (; !level.empty(); ++depth) {
        forEachPackage(level.size(), control, [&](std::size_t i) {
            Package& package = *level[i];
            readPackage(package, depth < deepestLevel, control);
            return package.dependency ? package.dependency->name : displayName(package.place.folder);
        });
        std::vector<Package*> next;
        for (Package* package : level) {
            takeUnseen(package->nested, seen, next);
        }
        level = std::move(next);
    }
    collect(top, seen, result);
}

}  // namespace

void walk(const std::filesystem::path& nodeModules, int depth, Seen& seen, std::vector<RawDependency>& result,
          const ReadControl& control) {
    if (depth <= deepestLevel) {
        readTree(packagesIn(placeOf(nodeModules)), depth, seen, result, control);
    }
}

void visit(const std::filesystem::path& packageFolder, int depth, Seen& seen,
           std::vector<RawDependency>& result, const ReadControl& control) {
    readTree({{placeOf(packageFolder)}}, depth, seen, result, control);
}

}  // namespace ScanKit::NPMParser

#include "ScanKit/Scan/ProjectDetection.h"

#include "ScanKit/Scan/ForeignFiles.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {
namespace {

constexpr int deepestLevel = 4;
constexpr std::string_view environmentMark = "pyvenv.cfg";

/// Build products, caches, version control and installed packages.
constexpr auto skippedFolders = std::to_array<std::string_view>(
    {"node_modules",  ".git",        ".hg",           ".svn",     ".build",   "build",
     "dist",          "DerivedData", "Pods",          "Carthage", ".swiftpm", "__pycache__",
     "site-packages", ".next",       ".nuxt",         ".cache",   ".gradle",  "vendor",
     ".tox",          ".mypy_cache", ".pytest_cache", "coverage", "out",      "target"});

struct BundleKind {
    std::string_view extension;
    std::string_view resolvedFile;  ///< where the bundle keeps the Package.resolved that its users share
};
constexpr auto bundleKinds = std::to_array<BundleKind>({
    {".xcodeproj", "project.xcworkspace/xcshareddata/swiftpm/Package.resolved"},
    {".xcworkspace", "xcshareddata/swiftpm/Package.resolved"},
});

/// A lockfile's name and the list it belongs into.
struct LockRow {
    std::string_view name;
    std::vector<std::filesystem::path> Detection::*list;
};
/// Of npm packages: they count beside a package.json.
constexpr auto otherLocks = std::to_array<LockRow>({
    {"pnpm-lock.yaml", &Detection::pnpmLocks},
    {"yarn.lock", &Detection::yarnLocks},
    {"bun.lock", &Detection::bunLocks},
    {"bun.lockb", &Detection::bunBinaryLocks},
});
constexpr auto pythonLocks = std::to_array<LockRow>({
    {"uv.lock", &Detection::uvLocks},
    {"pdm.lock", &Detection::pdmLocks},
    {"Pipfile.lock", &Detection::pipfileLocks},
});

const BundleKind* bundleKindOf(std::string_view name) {
    const auto found = std::ranges::find_if(
        bundleKinds, [&](const BundleKind& kind) { return name.ends_with(kind.extension); });
    return found == bundleKinds.end() ? nullptr : &*found;
}

bool isSkipped(std::string_view name) {
    return std::ranges::find(skippedFolders, name) != skippedFolders.end() || name.ends_with(".app") ||
           name.ends_with(".xcassets") || name.ends_with(".bundle");
}

/// Walks the project and writes down what it meets.
class Walk {
public:
    Detection detect(const std::filesystem::path& root) {
        if (isRegularFile(root / environmentMark)) {
            found_.virtualEnvs.push_back(root);
        }
        visit(root, 0);
        return std::move(found_);
    }

private:
    void visit(const std::filesystem::path& folder, int depth) {
        const std::vector<FolderEntry> entries = listPackageFolder(folder);
        noteSwiftPackages(folder, entries);
        noteNPMPackage(folder, entries);
        // Files before folders, so that what lies higher is read first.
        for (const FolderEntry& entry : entries) {
            if (entry.kind != EntryKind::folder) {
                notePythonFile(folder, entry.name);
                if (isForeignFile(entry.name)) {
                    found_.foreignFiles.push_back(folder / entry.name);
                }
            }
        }
        for (const FolderEntry& entry : entries) {
            if (entry.kind == EntryKind::folder) {
                visitSubfolder(folder / entry.name, entry, depth);
            }
        }
    }

    void noteSwiftPackages(const std::filesystem::path& folder, const std::vector<FolderEntry>& entries) {
        if (entryNamed(entries, "Package.resolved") != nullptr) {
            found_.resolvedFiles.push_back(folder / "Package.resolved");
        } else if (entryNamed(entries, "Package.swift") != nullptr) {
            found_.swiftManifestsOnly.push_back(folder / "Package.swift");
        }
        for (const char* below : {".build/checkouts", "SourcePackages/checkouts"}) {
            if (isFolder(folder / below)) {
                found_.checkoutFolders.push_back(folder / below);
            }
        }
    }

    void noteNPMPackage(const std::filesystem::path& folder, const std::vector<FolderEntry>& entries) {
        const auto holds = [&](std::string_view name) { return entryNamed(entries, name) != nullptr; };
        // A lockfile alone belongs to no package: some tools leave theirs in odd places.
        if (!holds("package.json")) {
            return;
        }
        bool hasOtherLock = false;
        for (const LockRow& row : otherLocks) {
            // The text form of a lockfile says all that its binary form does.
            if (holds(row.name) && !(row.name == "bun.lockb" && holds("bun.lock"))) {
                (found_.*row.list).push_back(folder / row.name);
                hasOtherLock |= row.list != &Detection::bunBinaryLocks;
            }
        }
        if (holds("package-lock.json")) {
            found_.npmLockfiles.push_back(folder / "package-lock.json");
        } else if (holds("npm-shrinkwrap.json")) {
            found_.npmLockfiles.push_back(folder / "npm-shrinkwrap.json");
        } else if (hasOtherLock) {
            return;
        } else if (holds("node_modules")) {
            found_.npmModulesWithoutLock.push_back(folder / "node_modules");
        } else {
            found_.npmManifestsOnly.push_back(folder / "package.json");
        }
    }

    void notePythonFile(const std::filesystem::path& folder, const std::string& name) {
        const std::string lowercased = Text::lowercased(name);
        if (lowercased.starts_with("requirements") && lowercased.ends_with(".txt")) {
            found_.requirementFiles.push_back(folder / name);
        } else if (lowercased == "poetry.lock") {
            found_.poetryLocks.push_back(folder / name);
        } else if (name == "pylock.toml" || (name.starts_with("pylock.") && name.ends_with(".toml"))) {
            found_.pyLocks.push_back(folder / name);
        }
        for (const LockRow& row : pythonLocks) {
            if (name == row.name) {
                (found_.*row.list).push_back(folder / name);
            }
        }
    }

    void visitSubfolder(const std::filesystem::path& folder, const FolderEntry& entry, int depth) {
        if (const BundleKind* kind = bundleKindOf(entry.name)) {
            noteBundle(folder, *kind);
        } else if (isRegularFile(folder / environmentMark)) {
            found_.virtualEnvs.push_back(folder);
        } else if (depth < deepestLevel && !entry.isLink && !isSkipped(entry.name)) {
            visit(folder, depth + 1);
        }
    }

    void noteBundle(const std::filesystem::path& bundle, const BundleKind& kind) {
        if (isRegularFile(bundle / kind.resolvedFile)) {
            found_.resolvedFiles.push_back(bundle / kind.resolvedFile);
        }
        const std::string project = bundle.stem().string();
        if (std::ranges::find(found_.xcodeProjectNames, project) == found_.xcodeProjectNames.end()) {
            found_.xcodeProjectNames.push_back(project);
        }
    }

    Detection found_;
};

}  // namespace

Detection detect(const std::filesystem::path& root) {
    return Walk().detect(root.is_absolute() ? root : absolutePath(root));
}

}  // namespace ScanKit

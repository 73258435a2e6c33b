#include "ScanKit/Readers/NPMParser.h"

#include "ScanKit/LicenseFiles/LicenseFiles.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Links.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view manifestName = "package.json";
constexpr std::string_view modulesName = "node_modules";
constexpr std::string_view modulesPrefix = "node_modules/";
constexpr int deepestLevel = 7;
/// No system takes a longer path. Names nested in each other would otherwise make a small file fill the memory.
constexpr std::size_t longestInstallPath = 4096;
/// Of all paths together, in bytes: ten times what a lockfile of 30,000 packages holds. What comes beyond is left
/// out.
constexpr std::size_t mostPathBytes = 64 << 20;

std::optional<std::string> unlessBlank(std::optional<std::string_view> text) {
    return text && !Text::isBlank(*text) ? std::optional<std::string>(*text) : std::nullopt;
}

/// The link as written, unless nothing of it would be left as a web link ("git+").
std::optional<std::string> unlessEmptyLink(std::optional<std::string_view> link) {
    return link && !Text::isBlank(webLink(*link)) ? std::optional<std::string>(*link) : std::nullopt;
}

// The description of one package

std::optional<std::string> typeOrText(const JsonValue& license) {
    return unlessBlank(license.isObject() ? license.stringMember("type") : license.string());
}

void applyManifest(RawDependency& dependency, const JsonValue& manifest) {
    if (std::optional<std::string> license = declaredLicense(manifest)) {
        dependency.declared = std::move(license);
    }
    if (const auto version = manifest.stringMember("version"); version && !version->empty()) {
        dependency.version = *version;
    }
    if (const auto name = manifest.stringMember("name"); name && !name->empty()) {
        dependency.name = *name;
    }
    if (const std::optional<std::string> repository = repositoryLink(manifest)) {
        dependency.source = withoutCredentials(webLink(*repository));
    }
}

/// The file name in "SEE LICENSE IN name", npm's way of pointing at a file.
std::optional<std::string_view> licenseFileReference(std::string_view declared) {
    constexpr std::string_view pointer = "SEE LICENSE IN ";
    const std::string_view start = Text::prefix(declared, pointer.size());
    if (Text::uppercased(start) != pointer) {
        return std::nullopt;
    }
    return Text::trimmed(declared.substr(start.size()));
}

/// A file that the package names itself is read before all others.
void putFirst(std::vector<std::filesystem::path>& files, const std::filesystem::path& file) {
    std::erase(files, file);
    files.insert(files.begin(), file);
}

bool holdsManifest(const std::vector<FolderEntry>& entries) {
    const FolderEntry* manifest = entryNamed(entries, manifestName);
    return manifest != nullptr && manifest->kind == EntryKind::file;
}

void enrichFrom(RawDependency& dependency, const std::filesystem::path& folder,
                const std::vector<FolderEntry>& entries) {
    thread_local JsonReader reader;  // keeps its buffers from package to package
    if (holdsManifest(entries)) {
        if (const auto bytes =
                readFile(folder / manifestName, largestPackageDescription, PathKind::regularFile)) {
            if (const std::optional<JsonValue> manifest = reader.read(*bytes)) {
                applyManifest(dependency, *manifest);
            }
        }
    }
    LicenseFiles files = findLicenseFiles(folder, entries);
    dependency.folder = folder;
    dependency.licenseFiles = std::move(files.licenses);
    dependency.noticeFiles = std::move(files.notices);
    if (const auto reference =
            dependency.declared ? licenseFileReference(*dependency.declared) : std::nullopt) {
        if (const auto named = fileNamedByMetadata(folder, *reference)) {
            putFirst(dependency.licenseFiles, *named);
        }
    }
}

std::string identityOf(const RawDependency& dependency) {
    return dependency.name + "@" + dependency.version;
}

// The lockfile

struct LockEntry {
    std::string path;  ///< where the package is installed, relative to the project folder
    JsonValue description;
};

std::vector<LockEntry> entriesOfPackages(const std::vector<JsonValue::Member>& packages) {
    std::vector<LockEntry> entries;
    for (const auto& [path, description] : packages) {
        if (path.find(modulesPrefix) != std::string_view::npos) {
            entries.push_back({std::string(path), description});
        }
    }
    return entries;
}

/// The oldest lockfiles nest the packages as their folders are nested.
void appendTree(const JsonValue& packages, const std::string& prefix, std::vector<LockEntry>& entries,
                std::size_t& pathBytes) {
    for (const auto& [name, description] : packages.members()) {
        std::string path = prefix + std::string(modulesPrefix) + std::string(name);
        if (!description.isObject() || path.size() > longestInstallPath ||
            pathBytes + path.size() > mostPathBytes) {
            continue;
        }
        pathBytes += path.size();
        if (const std::optional<JsonValue> nested = description.member("dependencies")) {
            appendTree(*nested, path + "/", entries, pathBytes);
        }
        entries.push_back({std::move(path), description});
    }
}

std::vector<LockEntry> sortedEntries(const JsonValue& lockfile) {
    std::vector<LockEntry> entries;
    const std::optional<JsonValue> packages = lockfile.member("packages");
    const std::vector<JsonValue::Member> members =
        packages ? packages->members() : std::vector<JsonValue::Member>{};
    const auto isObject = [](const JsonValue::Member& member) { return member.second.isObject(); };
    if (packages && packages->isObject() && std::ranges::all_of(members, isObject)) {
        entries = entriesOfPackages(members);
    } else if (const std::optional<JsonValue> tree = lockfile.member("dependencies")) {
        std::size_t pathBytes = 0;
        appendTree(*tree, "", entries, pathBytes);
    }
    std::ranges::stable_sort(entries, {}, &LockEntry::path);
    return entries;
}

/// Where an entry's package would be installed; absent for a path that no installer writes.
std::optional<std::filesystem::path> installFolder(const std::filesystem::path& projectFolder,
                                                   const std::string& installPath) {
    const std::filesystem::path below = std::filesystem::path(installPath).relative_path();
    if (installPath.find('\0') != std::string::npos || std::ranges::find(below, "..") != below.end()) {
        return std::nullopt;
    }
    return standardized(projectFolder / below);
}

bool isDev(const JsonValue& description) {
    return description.booleanMember("dev") == true || description.booleanMember("devOptional") == true;
}

RawDependency dependencyOf(const LockEntry& entry) {
    RawDependency dependency{
        .ecosystem = Ecosystem::npm,
        .name = entry.path.substr(entry.path.rfind(modulesPrefix) + modulesPrefix.size()),
        .version = std::string(entry.description.stringMember("version").value_or("")),
        .isDev = isDev(entry.description),
        .declared = declaredLicense(entry.description)};
    if (const auto alias = entry.description.stringMember("name"); alias && !alias->empty()) {
        dependency.name = *alias;
    }
    if (const auto resolved = unlessBlank(entry.description.stringMember("resolved"))) {
        dependency.source = withoutCredentials(*resolved);
    }
    return dependency;
}

/// The entry's package, enriched when it is installed. Absent when it is none to report: a link, a local package,
/// or an optional one that was left out on this system.
std::optional<RawDependency> lockedPackage(const LockEntry& entry, const std::filesystem::path& projectFolder,
                                           bool hasModules) {
    if (entry.description.booleanMember("link") == true) {
        return std::nullopt;
    }
    std::vector<FolderEntry> entries;
    const auto folder = hasModules ? installFolder(projectFolder, entry.path) : std::nullopt;
    if (folder) {
        entries = listPackageFolder(*folder);
    }
    const bool isInstalled = holdsManifest(entries);
    if (hasModules && !isInstalled && entry.description.booleanMember("optional") == true) {
        return std::nullopt;
    }
    RawDependency dependency = dependencyOf(entry);
    if (isInstalled) {
        enrichFrom(dependency, *folder, entries);
    }
    if (dependency.version.starts_with("file:") || dependency.version.starts_with("link:")) {
        return std::nullopt;
    }
    return dependency;
}

// The installed tree

/// A folder by the way that led to it, and by where it really is.
struct Place {
    std::filesystem::path folder;
    std::filesystem::path real;
};

/// One package folder of the tree: found first, read later.
struct Package {
    Place place;
    std::optional<RawDependency> dependency = {};  ///< absent when the folder turned out to be no package
    std::vector<Package> nested = {};
};

std::filesystem::path resolved(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

/// Only a link needs resolving; any other entry really lies where its parent does.
Place placeOf(const Place& parent, const FolderEntry& entry) {
    Place place{parent.folder / entry.name, parent.real / entry.name};
    if (entry.isLink) {
        place.real = resolved(place.folder);
    }
    return place;
}

std::vector<Package> packagesIn(const Place& nodeModules) {
    std::vector<Package> packages;
    for (const FolderEntry& entry : listPackageFolder(nodeModules.folder)) {
        if (entry.kind != EntryKind::folder || entry.name.starts_with('.')) {
            continue;
        }
        const Place place = placeOf(nodeModules, entry);
        if (!entry.name.starts_with('@')) {
            packages.push_back({place});
            continue;
        }
        for (const FolderEntry& scoped : listPackageFolder(place.folder)) {
            if (scoped.kind == EntryKind::folder) {
                packages.push_back({placeOf(place, scoped)});
            }
        }
    }
    return packages;
}

void readPackage(Package& package, bool hasRoomBelow) {
    const std::filesystem::path& folder = package.place.folder;
    const std::vector<FolderEntry> entries = listPackageFolder(folder);
    if (!holdsManifest(entries)) {
        return;
    }
    package.dependency = {.ecosystem = Ecosystem::npm, .name = displayName(folder)};
    enrichFrom(*package.dependency, folder, entries);
    const FolderEntry* modules = entryNamed(entries, modulesName);
    if (hasRoomBelow && modules != nullptr && modules->kind == EntryKind::folder) {
        package.nested = packagesIn(placeOf(package.place, *modules));
    }
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

void collect(std::vector<Package>& packages, Seen& seen, std::vector<RawDependency>& result) {
    for (Package& package : packages) {
        if (package.dependency && seen.packages.insert(identityOf(*package.dependency)).second) {
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
            readPackage(package, depth < deepestLevel);
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

std::vector<RawDependency> dependencies(std::string_view lockfile, const std::filesystem::path& projectFolder,
                                        const ReadControl& control) {
    JsonReader reader;
    const std::optional<JsonValue> top = reader.read(lockfile);
    if (!top) {
        return {};
    }
    const bool hasModules = isFolder(projectFolder / modulesName);
    const std::vector<LockEntry> entries = sortedEntries(*top);
    std::vector<std::optional<RawDependency>> packages(entries.size());
    forEachPackage(entries.size(), control, [&](std::size_t i) {
        packages[i] = lockedPackage(entries[i], projectFolder, hasModules);
        return packages[i] ? packages[i]->name : entries[i].path;
    });
    std::vector<RawDependency> result;
    std::unordered_set<std::string> seen;
    for (std::optional<RawDependency>& package : packages) {
        if (package && seen.insert(identityOf(*package)).second) {
            result.push_back(std::move(*package));
        }
    }
    return result;
}

void walk(const std::filesystem::path& nodeModules, int depth, Seen& seen, std::vector<RawDependency>& result,
          const ReadControl& control) {
    if (depth <= deepestLevel) {
        readTree(packagesIn({nodeModules, resolved(nodeModules)}), depth, seen, result, control);
    }
}

void visit(const std::filesystem::path& packageFolder, int depth, Seen& seen,
           std::vector<RawDependency>& result, const ReadControl& control) {
    readTree({{{packageFolder, resolved(packageFolder)}}}, depth, seen, result, control);
}

void enrich(RawDependency& dependency, const std::filesystem::path& folder) {
    enrichFrom(dependency, folder, listPackageFolder(folder));
}

std::optional<std::string> declaredLicense(const JsonValue& package) {
    if (const std::optional<JsonValue> license = package.member("license")) {
        if (std::optional<std::string> declared = typeOrText(*license)) {
            return declared;
        }
    }
    const std::optional<JsonValue> legacy = package.member("licenses");
    std::vector<std::string> choices;
    for (const JsonValue& license : legacy ? legacy->elements() : std::vector<JsonValue>{}) {
        if (std::optional<std::string> choice = typeOrText(license)) {
            choices.push_back(std::move(*choice));
        }
    }
    if (choices.size() > 1) {
        return "(" + Text::joined(choices, " OR ") + ")";
    }
    return choices.empty() ? std::nullopt : std::optional(choices.front());
}

std::optional<std::string> repositoryLink(const JsonValue& package) {
    if (const std::optional<JsonValue> repository = package.member("repository")) {
        const auto link = repository->isObject() ? repository->stringMember("url") : repository->string();
        if (std::optional<std::string> written = unlessEmptyLink(link)) {
            return written;
        }
    }
    return unlessEmptyLink(package.stringMember("homepage"));
}

std::string webLink(std::string_view repository) {
    constexpr std::string_view codeHost = "https://github.com/";
    std::string link(repository);
    const auto replacePrefix = [&link](std::string_view prefix, std::string_view replacement) {
        if (link.starts_with(prefix)) {
            link.replace(0, prefix.size(), replacement);
        }
    };
    replacePrefix("git+", "");
    replacePrefix("github:", codeHost);
    std::vector<std::string_view> pieces = Text::split(link, "/");
    std::erase(pieces, "");
    if (link.find(':') == std::string::npos && pieces.size() == 2) {
        link.insert(0, codeHost);
    }
    replacePrefix("git://", "https://");
    replacePrefix("ssh://git@", "https://");
    if (link.ends_with(".git")) {
        link.erase(link.size() - 4);
    }
    return link;
}

}  // namespace ScanKit::NPMParser

#include "ScanKit/Readers/NPM/PackageLock.h"

#include "ScanKit/Readers/NPM/PackageJSON.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view modulesPrefix = "node_modules/";
/// No system takes a longer path. Names nested in each other would otherwise make a small file fill the memory.
constexpr std::size_t longestInstallPath = 4096;
/// Of all paths together, in bytes: ten times what a lockfile of 30,000 packages holds. What comes beyond is left
/// out.
constexpr std::size_t mostPathBytes = 64 << 20;

/// One entry as it is found; what it says is taken from it later, many at a time.
struct Entry {
    std::string installPath;
    JSONValue description;
};

LockedPackage packageOf(std::string installPath, const JSONValue& entry) {
    const auto isTrue = [&entry](std::string_view member) { return entry.booleanMember(member) == true; };
    LockedPackage package{.name = installPath.substr(installPath.rfind(modulesPrefix) + modulesPrefix.size()),
                          .version = std::string(entry.stringMember("version").value_or("")),
                          .declared = declaredLicense(entry),
                          .isDev = isTrue("dev") || isTrue("devOptional"),
                          .isOptional = isTrue("optional"),
                          .isLink = isTrue("link")};
    if (const auto alias = entry.stringMember("name"); alias && !alias->empty()) {
        package.name = *alias;
    }
    if (const auto resolved = entry.stringMember("resolved"); resolved && !Text::isBlank(*resolved)) {
        package.source = *resolved;
    }
    package.installPath = std::move(installPath);
    return package;
}

/// Versions 2 and 3 list all packages by path. The project itself and its workspaces stand there too, under paths
/// without node_modules.
std::vector<Entry> entriesOfList(const std::vector<JSONValue::Member>& members) {
    std::vector<Entry> entries;
    for (const auto& [path, entry] : members) {
        if (path.find(modulesPrefix) != std::string_view::npos) {
            entries.push_back({std::string(path), entry});
        }
    }
    return entries;
}

/// Version 1 nests the packages as their folders are nested.
void appendTree(const JSONValue& tree, const std::string& prefix, std::vector<Entry>& entries,
                std::size_t& pathBytes) {
    for (const auto& [name, entry] : tree.members()) {
        std::string path = prefix + std::string(modulesPrefix) + std::string(name);
        if (!entry.isObject() || path.size() > longestInstallPath ||
            pathBytes + path.size() > mostPathBytes) {
            continue;
        }
        pathBytes += path.size();
        if (const std::optional<JSONValue> nested = entry.member("dependencies")) {
            appendTree(*nested, path + "/", entries, pathBytes);
        }
        entries.push_back({std::move(path), entry});
    }
}

}  // namespace

std::optional<std::vector<LockedPackage>> lockedPackages(std::string_view lockfile,
                                                         const ReadControl& control) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(lockfile);
    if (!top || !top->isObject()) {
        return std::nullopt;
    }
    std::vector<Entry> entries;
    const std::optional<JSONValue> list = top->member("packages");
    const std::optional<JSONValue> tree = top->member("dependencies");
    const std::vector<JSONValue::Member> members = list ? list->members() : std::vector<JSONValue::Member>{};
    const auto isObject = [](const JSONValue::Member& member) { return member.second.isObject(); };
    if (list && list->isObject() && std::ranges::all_of(members, isObject)) {
        entries = entriesOfList(members);
    } else if (tree && tree->isObject()) {
        std::size_t pathBytes = 0;
        appendTree(*tree, "", entries, pathBytes);
    } else if (list || tree) {
        return std::
            nullopt;  // a project without packages has neither; this has something else in their place
    }
    std::ranges::stable_sort(entries, {}, &Entry::installPath);
    std::vector<LockedPackage> packages(entries.size());
    const auto read = [&](std::size_t i) {
        packages[i] = packageOf(std::move(entries[i].installPath), entries[i].description);
    };
    forEachIndex(entries.size(), read, control.stop, control.threadLimit);
    return packages;
}

}  // namespace ScanKit::NPMParser

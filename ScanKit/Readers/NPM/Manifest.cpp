#include "ScanKit/Readers/NPM/Manifest.h"

#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <set>
#include <utility>

#include <fnmatch.h>

namespace ScanKit::NPMParser {
namespace {

constexpr std::string_view manifestName = "package.json";
/// Far beyond any workspace; a pattern such as "**" in a folder without end stops here.
constexpr std::size_t mostFolders = 20'000;
constexpr std::size_t deepestFolder = 16;

using Parts = std::vector<std::string>;

std::vector<Request> requests(const JSONValue& manifest, std::string_view member) {
    std::vector<Request> found;
    const std::optional<JSONValue> list = manifest.member(member);
    for (const auto& [name, range] : list ? list->members() : std::vector<JSONValue::Member>{}) {
        if (const auto text = range.string(); text && !name.empty()) {
            found.push_back({std::string(name), std::string(*text)});
        }
    }
    return found;
}

/// Either the list itself, or an object that holds it.
std::vector<std::string> workspacePatterns(const JSONValue& manifest) {
    std::optional<JSONValue> list = manifest.member("workspaces");
    if (list && list->isObject()) {
        list = list->member("packages");
    }
    std::vector<std::string> patterns;
    for (const JSONValue& pattern : list ? list->elements() : std::vector<JSONValue>{}) {
        if (const auto text = pattern.string()) {
            patterns.emplace_back(*text);
        }
    }
    return patterns;
}

/// The parts of a pattern; absent for one that leads out of the project or is no path.
std::optional<Parts> partsOf(std::string_view pattern) {
    if (pattern.starts_with('/') || pattern.find('\0') != std::string_view::npos) {
        return std::nullopt;
    }
    Parts parts;
    for (const std::string_view part : Text::split(pattern, "/")) {
        const bool repeats = part == "**" && !parts.empty() && parts.back() == "**";
        if (part == ".." || parts.size() > deepestFolder) {
            return std::nullopt;
        }
        if (!part.empty() && part != "." && !repeats) {
            parts.emplace_back(part);
        }
    }
    return parts;
}

bool matches(const std::string& pattern, const std::string& name) {
    return fnmatch(pattern.c_str(), name.c_str(), FNM_PERIOD) == 0;
}

bool matches(const Parts& pattern, std::size_t at, const Parts& path, std::size_t from) {
    if (at == pattern.size()) {
        return from == path.size();
    }
    if (pattern[at] == "**") {
        return matches(pattern, at + 1, path, from) ||
               (from < path.size() && matches(pattern, at, path, from + 1));
    }
    return from < path.size() && matches(pattern[at], path[from]) && matches(pattern, at + 1, path, from + 1);
}

/// Finds the folders that one pattern names.
class Search {
public:
    Search(const std::filesystem::path& projectFolder, std::set<std::string>& found)
        : projectFolder_(projectFolder), found_(found) {}

    void find(const Parts& pattern) { look("", 0, pattern, 0); }

private:
    void look(const std::string& below, std::size_t depth, const Parts& pattern, std::size_t at) {
        if (depth > deepestFolder || listed_ == mostFolders) {
            return;
        }
        ++listed_;
        const std::vector<FolderEntry> entries = listPackageFolder(projectFolder_ / below);
        const bool isOpen = at < pattern.size() && pattern[at] == "**";
        if (at == pattern.size() || (isOpen && at + 1 == pattern.size())) {
            const FolderEntry* const manifest = entryNamed(entries, manifestName);
            if (!below.empty() && manifest != nullptr && manifest->kind == EntryKind::file) {
                found_.insert(below);
            }
        }
        for (const FolderEntry& entry : entries) {
            if (entry.kind != EntryKind::folder || entry.isLink || entry.name.starts_with('.') ||
                entry.name == "node_modules") {
                continue;
            }
            const std::string next = below.empty() ? entry.name : below + "/" + entry.name;
            const std::size_t part = isOpen ? at + 1 : at;
            if (isOpen) {
                look(next, depth + 1, pattern, at);
            }
            if (part < pattern.size() && matches(pattern[part], entry.name)) {
                look(next, depth + 1, pattern, part + 1);
            }
        }
    }

    const std::filesystem::path& projectFolder_;
    std::set<std::string>& found_;
    std::size_t listed_ = 0;
};

}  // namespace

std::optional<Manifest> readManifest(std::string_view bytes, std::string below) {
    JSONReader reader;
    const std::optional<JSONValue> top = reader.read(bytes);
    if (!top || !top->isObject()) {
        return std::nullopt;
    }
    Manifest manifest{.below = std::move(below),
                      .name = std::string(top->stringMember("name").value_or("")),
                      .version = std::string(top->stringMember("version").value_or("")),
                      .dependencies = requests(*top, "dependencies"),
                      .developmentDependencies = requests(*top, "devDependencies"),
                      .optionalDependencies = requests(*top, "optionalDependencies"),
                      .peerDependencies = requests(*top, "peerDependencies"),
                      .resolutions = requests(*top, "resolutions"),
                      .workspaces = workspacePatterns(*top)};
    std::set<std::string_view> optional;
    for (const Request& request : manifest.optionalDependencies) {
        optional.insert(request.name);
    }
    std::erase_if(manifest.dependencies,
                  [&](const Request& request) { return optional.contains(request.name); });
    return manifest;
}

std::vector<std::string> workspaceFolders(const std::filesystem::path& projectFolder,
                                          const std::vector<std::string>& patterns) {
    std::set<std::string> found;
    for (const std::string& pattern : patterns) {
        if (const auto parts = partsOf(pattern); parts && !pattern.starts_with('!')) {
            Search(projectFolder, found).find(*parts);
        }
    }
    for (const std::string& pattern : patterns) {
        if (!pattern.starts_with('!')) {
            continue;
        }
        if (const auto parts = partsOf(std::string_view(pattern).substr(1))) {
            std::erase_if(found, [&](const std::string& folder) {
                return matches(*parts, 0, partsOf(folder).value_or(Parts{}), 0);
            });
        }
    }
    return {found.begin(), found.end()};
}

std::vector<Manifest> projectManifests(const std::filesystem::path& projectFolder) {
    const auto read = [&](const std::string& below) -> std::optional<Manifest> {
        const auto bytes = readFile(projectFolder / below / manifestName, largestPackageDescription);
        return bytes ? readManifest(*bytes, below) : std::nullopt;
    };
    std::vector<Manifest> manifests;
    if (std::optional<Manifest> project = read(".")) {
        const std::vector<std::string> members = workspaceFolders(projectFolder, project->workspaces);
        manifests.push_back(std::move(*project));
        for (const std::string& member : members) {
            if (std::optional<Manifest> manifest = read(member)) {
                manifests.push_back(std::move(*manifest));
            }
        }
    }
    return manifests;
}

}  // namespace ScanKit::NPMParser

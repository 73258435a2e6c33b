#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a project and its workspace members ask for themselves, each in its package.json. A lockfile of another manager
/// than npm names the packages, and leaves it to these files which of them only the development needs.
namespace ScanKit::NPMParser {

/// One package that a package.json asks for: by name, and by a range, an address or whatever else stands beside it.
struct Request {
    std::string name;
    std::string range;

    bool operator==(const Request&) const = default;
};

struct Manifest {
    std::string below;  ///< its folder relative to the project's: ".", or "packages/one"
    std::string name;
    std::string version;
    std::vector<Request> dependencies;  ///< without those that stand under `optionalDependencies` too
    std::vector<Request> developmentDependencies;
    std::vector<Request> optionalDependencies;
    std::vector<Request> peerDependencies;
    std::vector<Request>
        resolutions;  ///< a package, or a way to it ("a/b", "**/b"), and what is taken for it
    std::vector<std::string> workspaces;  ///< patterns for the members' folders, as they are written

    bool operator==(const Manifest&) const = default;
};

/// The manifest that these bytes are; `below` says where they lie. Absent when they are no JSON object. A part of
/// another type than it should have counts as absent.
std::optional<Manifest> readManifest(std::string_view bytes, std::string below);

/// The folders below the project's that workspace patterns name and that hold a package.json: relative, sorted, each once.
/// A pattern is a path whose parts may hold "*" and "?" or be "**"; one that begins with "!" takes folders out. Nothing
/// outside the project, behind a link, in a hidden folder or in node_modules is found, and after 20,000 folders the search
/// ends.
std::vector<std::string> workspaceFolders(const std::filesystem::path& projectFolder,
                                          const std::vector<std::string>& patterns);

/// The project's manifest and those of its workspace members, by their folders. Empty when the project has none that can
/// be read; a member whose own cannot be read is left out.
std::vector<Manifest> projectManifests(const std::filesystem::path& projectFolder);

}  // namespace ScanKit::NPMParser

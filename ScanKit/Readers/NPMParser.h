#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"
#include "ScanKit/Support/Json.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// Turns an npm lockfile and the packages installed in node_modules into dependencies. Nothing here fails: what
/// cannot be read is left out.
namespace ScanKit::NPMParser {

/// The dependencies that a lockfile (package-lock.json, npm-shrinkwrap.json) names, each name and version once,
/// in the order of their install paths. A package that is installed in the project folder carries its folder and
/// files, and its own package.json has the last word; others are told from the lockfile alone. Empty when the
/// bytes are no lockfile.
std::vector<RawDependency> dependencies(std::string_view lockfile, const std::filesystem::path& projectFolder,
                                        const ReadControl& control = {});

/// What a walk has met so far. One is shared by all calls whose findings belong together.
struct Seen {
    std::unordered_set<std::string> packages;  ///< name, "@", version: reported once
    std::unordered_set<std::string> folders;   ///< links resolved: read once, so that a loop of links ends
};

/// Appends the packages installed in a node_modules folder and, below them, in their own node_modules, down to
/// seven levels; each package stands before those nested in it. `depth` is 0 for the project's own node_modules.
/// Links are followed. A folder that is reached in several ways counts where the fewest levels lead to it, and
/// among those where it comes first.
void walk(const std::filesystem::path& nodeModules, int depth, Seen& seen, std::vector<RawDependency>& result,
          const ReadControl& control = {});
/// The same for one package folder and what is nested in it. A folder without a package.json is passed over.
void visit(const std::filesystem::path& packageFolder, int depth, Seen& seen,
           std::vector<RawDependency>& result, const ReadControl& control = {});

/// Completes a dependency from its installed folder: what the package.json states, the folder, and the license
/// and notice files. A package.json that cannot be read changes nothing of the rest.
void enrich(RawDependency& dependency, const std::filesystem::path& folder);

/// The license that a package.json or a lockfile entry states; several of the old form as "(A OR B)".
std::optional<std::string> declaredLicense(const JsonValue& package);
/// The repository of a package.json, as written; else its homepage.
std::optional<std::string> repositoryLink(const JsonValue& package);
/// The address of a web page for a repository in any of npm's spellings. An unknown one stays as it is.
std::string webLink(std::string_view repository);

}  // namespace ScanKit::NPMParser

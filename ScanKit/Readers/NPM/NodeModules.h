#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

/// The packages of an installed tree that has no lockfile.
namespace ScanKit::NPMParser {

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

}  // namespace ScanKit::NPMParser

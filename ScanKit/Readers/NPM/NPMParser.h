#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanSource.h"
#include "ScanKit/Readers/NPM/NodeModules.h"
#include "ScanKit/Readers/NPM/PackageLock.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// Turns an npm lockfile and the packages installed in node_modules into dependencies. Nothing here fails: what
/// cannot be read is left out. Without a lockfile `walk` reads the installed tree alone.
namespace ScanKit::NPMParser {

/// The dependencies that a lockfile (package-lock.json, npm-shrinkwrap.json) names, each name and version once,
/// in the order of their install paths. A package that is installed in the project folder carries its folder and
/// files, and its own package.json has the last word; others are told from the lockfile alone. One that stands
/// in several places is development-only when it is so in all of them. Absent when the bytes are no lockfile.
std::optional<std::vector<RawDependency>> dependencies(std::string_view lockfile,
                                                       const std::filesystem::path& projectFolder,
                                                       const ReadControl& control = {});

/// What a lockfile comes to: its packages, fit for reports, and what became of each entry.
struct NPMProject {
    std::vector<std::shared_ptr<const RawDependency>> packages;
    EntryStates states;
};
NPMProject npmProject(const std::shared_ptr<const PackageLock>& lock,
                      const std::filesystem::path& projectFolder, const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

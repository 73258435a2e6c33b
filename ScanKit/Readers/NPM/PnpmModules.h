#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/NPM/NodeModules.h"
#include "ScanKit/Readers/NPM/PackageStore.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <optional>
#include <vector>

/// Where pnpm, and Bun's isolated installs, put packages: its store in node_modules, plain folders there, or a store that all projects share.
namespace ScanKit::NPMParser {

/// The folder of each entry of a lockfile, absent where none is installed or the entry is the project's own. Entries of
/// one name and version that differ in their peers alone may share one. Links that lead out of the project are followed
/// to packages of the lockfile, since a shared store is made of them.
std::vector<std::optional<std::filesystem::path>> pnpmFolders(const Lockfile& lockfile,
                                                              const std::filesystem::path& projectFolder,
                                                              const ReadControl& control = {});

/// The major version of the pnpm that installed the project's packages; absent when none did, or does not say.
std::optional<int> installingPnpm(const std::filesystem::path& projectFolder);

/// The store of a project, which can be listed while its lockfile is read.
PackageStore pnpmStore(const std::filesystem::path& projectFolder, const ReadControl& control = {});
/// The same as `pnpmFolders` with a store that was listed already, of pnpm or of another manager that keeps one of this kind.
std::vector<std::optional<std::filesystem::path>> storedFolders(const Lockfile& lockfile,
                                                                const std::filesystem::path& projectFolder,
                                                                PackageStore packages,
                                                                const ReadControl& control = {});

/// Appends the packages in the store of a node_modules folder, and what is nested in them, each name and version once.
/// The project's own folders that were copied there are left out.
void walkPnpmStore(const std::filesystem::path& nodeModules, Seen& seen, std::vector<RawDependency>& result,
                   const ReadControl& control = {});

}  // namespace ScanKit::NPMParser

#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Support/JSON.h"
#include "ScanKit/Support/OpenFolder.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The description that each npm package carries, package.json, and what lies beside it.
namespace ScanKit::NPMParser {

/// Completes a dependency from its installed folder: what the package.json states, the folder, and the license
/// and notice files. A package.json that cannot be read changes nothing of the rest.
void enrich(RawDependency& dependency, const std::filesystem::path& folder);
/// The same for a folder that the caller has opened, by a standardized path.
void enrich(RawDependency& dependency, const OpenFolder& folder);

/// What a package.json states, from its bytes; one that cannot be read changes nothing.
void applyManifest(RawDependency& dependency, std::string_view bytes);

/// True when the folder holds a package.json: only such a folder is a package.
bool holdsManifest(const OpenFolder& folder);

/// The license that a package.json or a lockfile entry states; several of the old form as "(A OR B)". Blank text
/// counts as absent.
std::optional<std::string> declaredLicense(const JSONValue& package);
/// The file name in "SEE LICENSE IN name", npm's way of pointing at a file; absent in any other declared license.
std::optional<std::string_view> licenseFileReference(std::string_view declared);
/// The repository of a package.json, as written; else its homepage. Absent when neither leads anywhere.
std::optional<std::string> repositoryLink(const JSONValue& package);
/// The address of a web page for a repository in any of npm's spellings. An unknown one stays as it is.
std::string webLink(std::string_view repository);

}  // namespace ScanKit::NPMParser

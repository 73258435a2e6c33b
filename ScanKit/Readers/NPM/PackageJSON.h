#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Support/JSON.h"

#include <optional>
#include <string>
#include <string_view>

/// The description that each npm package carries: package.json.
namespace ScanKit::NPMParser {

/// What a package.json states, from its bytes; one that cannot be read changes nothing.
void applyManifest(RawDependency& dependency, std::string_view bytes);

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

#pragma once

#include "ScanKit/Identification/KnownLicense.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The vocabulary of licenses: turns whatever a package declares into the id of a known license, or into
/// nothing. All operations are pure and may be called from any thread.
namespace ScanKit::SPDX {

/// The row of this identifier, whatever its letter case; "GPL-2.0+" finds "GPL-2.0-or-later", and "MIT+" finds
/// "MIT". None for an unknown identifier.
const KnownLicense* lookup(std::string_view identifier);
/// The id of the row that `lookup` finds.
std::optional<std::string_view> canonicalID(std::string_view identifier);
/// The id that a free-text name such as "Apache License, Version 2.0" stands for. None unless an alias equals
/// the name once filler words and blanks are gone: nothing is guessed.
std::optional<std::string_view> normalize(std::string_view text);
/// The license family: "GPL-2.0" for "GPL-2.0-or-later". An unknown identifier loses the same suffixes.
std::string baseID(std::string_view identifier);
/// The id that one Python trove classifier names, or none.
std::optional<std::string_view> licenseFromClassifier(std::string_view classifier);
/// The ids of all classifiers, each once, joined by " OR ": several are read as a choice. None when no
/// classifier names a license.
std::optional<std::string> expressionFromClassifiers(const std::vector<std::string>& classifiers);
/// The standard text built in under this resource name, or none.
std::optional<std::string_view> builtInText(std::string_view name);

/// Squeezed free-text names (lower case, no blanks) and the id each stands for, in the order of search.
std::span<const std::pair<std::string_view, std::string_view>> aliases();

}  // namespace ScanKit::SPDX

#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>
#include <string>
#include <string_view>

namespace ScanKit::PythonParser {

/// The packages of a pdm.lock. A package with extras is an entry of its own, beside the one without. Where the file names
/// the groups of each package they have the word: those that pyproject.toml has for development, or without that file all
/// but "default", do not ship. Absent when the text is no such file.
std::optional<Lockfile> pdmLock(std::string_view text, const std::optional<std::string>& pyproject);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>
#include <string_view>

namespace ScanKit::PythonParser {

/// The packages of a pylock.toml or pylock.NAME.toml, version 1 of the standard. What is only for groups beyond the default
/// ones does not ship, what is only for extras may be missing. The file does not say what the project itself asks for.
/// Absent when the text is no such file.
std::optional<Lockfile> pyLock(std::string_view text);

}  // namespace ScanKit::PythonParser

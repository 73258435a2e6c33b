#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>
#include <string_view>

namespace ScanKit::PythonParser {

/// The packages of a Pipfile.lock, whose keys are the name with the section before it. Everything outside the section
/// "develop" ships. The file does not say who needs whom. Absent when the text is no such file.
std::optional<Lockfile> pipfileLock(std::string_view text);

}  // namespace ScanKit::PythonParser

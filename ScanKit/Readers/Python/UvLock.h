#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>
#include <string_view>

namespace ScanKit::PythonParser {

/// The packages of a uv.lock. The file holds the project and the members of its workspace too: what they depend on is what
/// is asked for. Absent when the text is no such file.
std::optional<Lockfile> uvLock(std::string_view text);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Readers/Python/Requirement.h"

#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// The requirements of a requirements file, each marked with `isDev`. Options, addresses and local paths are left
/// out, and so is a line that names no package.
std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev);

}  // namespace ScanKit::PythonParser

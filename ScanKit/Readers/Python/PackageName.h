#pragma once

#include <string>
#include <string_view>

namespace ScanKit::PythonParser {

/// The name under which spellings of one package are the same: lower case, each run of "-", "_" and "." one "-".
std::string normalizedName(std::string_view name);

}  // namespace ScanKit::PythonParser

#pragma once

#include <string>
#include <string_view>

namespace ScanKit {

/// The text as plain JSON: remarks (from "//" to the end of the line, and between "/*" and "*/") and a comma behind the last
/// value of a list or an object become blanks; strings stay as they are. What is at fault otherwise stays at fault.
std::string plainJSON(std::string_view text);

}  // namespace ScanKit

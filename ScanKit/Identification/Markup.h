#pragma once

#include <string>
#include <string_view>

namespace ScanKit {

/// True for a text that is an HTML page.
bool isMarkup(std::string_view text);

/// The words of an HTML page as plain text: no tags, scripts and styles, the usual character references as what they stand
/// for, a line for each paragraph, list item or heading.
std::string withoutMarkup(std::string_view page);

}  // namespace ScanKit

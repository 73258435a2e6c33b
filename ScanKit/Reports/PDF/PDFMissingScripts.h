#pragma once

#include <optional>
#include <string>

namespace ScanKit {

/// What to tell of characters that no font has: the scripts that they are of, and the packages that have fonts for
/// them. Absent without a character.
std::optional<std::string> missingScriptsSentence(const std::u32string& characters);

}  // namespace ScanKit

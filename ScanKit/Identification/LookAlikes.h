#pragma once

#include "ScanKit/Identification/LicenseMatcher.h"

#include <optional>
#include <string_view>

namespace ScanKit {

/// Some licenses contain a standard text nearly whole and differ in a sentence: the AGPL holds the GPL, the
/// four-clause BSD license the three-clause one. The id that a text with exactly this one match really carries,
/// or none when the match stands. `joinedWords` holds all words of the text in lower case, joined by blanks.
std::optional<std::string_view> lookAlikeOf(const TextMatch& match, std::string_view joinedWords);

}  // namespace ScanKit

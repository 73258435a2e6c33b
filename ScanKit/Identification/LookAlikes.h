#pragma once

#include "ScanKit/Identification/LicenseMatcher.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace ScanKit {

/// Some licenses contain a standard text nearly whole and differ in a sentence: the AGPL holds the GPL, the
/// four-clause BSD license the three-clause one. The id that a text with exactly this one match really carries,
/// or none when the match stands. `joinedWords` holds all words of the text in lower case, joined by blanks.
std::optional<std::string_view> lookAlikeOf(const TextMatch& match, std::string_view joinedWords);

/// True when the words tell a license that no row knows, made of the text of this one: CC-BY-SA-4.0 holds nearly all of
/// CC-BY-4.0. `words` are LicenseText::words.
bool isDerivedLicense(std::string_view matchedId, std::span<const std::uint64_t> words);

}  // namespace ScanKit

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a terminal can take. Text from packages reaches it only through `safe`.
namespace Terminal {

/// The text with control characters, escape characters and characters that reorder text shown as symbols
/// ("␛", "\u{202E}") in place of being sent. Invalid UTF-8 shows as U+FFFD.
std::string safe(std::string_view text);

/// How many columns the text takes: wide characters count two, combining ones none.
std::size_t width(std::string_view text);
/// The text, cut with "…" when it takes more than `columns`.
std::string fitted(std::string_view text, std::size_t columns);

/// What becomes of a word that is longer than a line: it stands alone and runs on, as an address does that someone
/// wants to copy, or it is broken, after a sign where it has one.
enum class LongWords { runOn, broken };
/// The text in lines of at most `columns`, which is at least one, broken between words. A text without words is one
/// empty line.
std::vector<std::string> wrapped(std::string_view text, std::size_t columns, LongWords longWords);

/// The columns of the terminal that a file descriptor leads to; absent when it leads elsewhere.
std::optional<std::size_t> columns(int descriptor);
/// True when colours may be sent there: it is a terminal that knows them, and NO_COLOR is not set.
bool takesColour(int descriptor);

}  // namespace Terminal

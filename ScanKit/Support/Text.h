#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Operations on UTF-8 text in Unicode's terms: a character is an extended grapheme cluster, case is that of the
/// root locale whatever the user's. All accept any bytes; an invalid part counts as U+FFFD.
namespace ScanKit::Text {

std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

/// White space in Unicode's sense, line breaks included.
bool isWhitespace(char32_t scalar);
/// A letter or a digit in Unicode's sense.
bool isAlphanumeric(char32_t scalar);
/// LF, VT, FF, CR, NEL, LINE SEPARATOR or PARAGRAPH SEPARATOR.
constexpr bool isLineBreak(char32_t scalar) {
    return (scalar >= 0x0A && scalar <= 0x0D) || scalar == 0x85 || scalar == 0x2028 || scalar == 0x2029;
}

/// A control character of ASCII or of Latin-1, which may do something to a terminal.
constexpr bool isControl(char32_t scalar) {
    return scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
}
/// Marks, embeddings, overrides and isolates of bidirectional text: they can show the text around them in another order.
constexpr bool turnsDirection(char32_t scalar) {
    return scalar == 0x061C || scalar == 0x200E || scalar == 0x200F ||
           (scalar >= 0x202A && scalar <= 0x202E) || (scalar >= 0x2066 && scalar <= 0x2069);
}

/// Without the white space, line breaks included, at both ends.
std::string_view trimmed(std::string_view text);
/// Without the spaces and tabs (not line breaks) at both ends.
std::string_view trimmedOfBlanks(std::string_view text);
/// Without any of these ASCII characters at both ends.
std::string_view trimmedOf(std::string_view text, std::string_view characters);
/// True when there is nothing but white space.
bool isBlank(std::string_view text);

/// The scalar that begins at `offset`, which is moved past it. U+FFFD for an invalid part.
char32_t nextScalar(std::string_view text, std::size_t& offset);
/// The text with U+FFFD in place of each invalid part.
std::string validUtf8(std::string text);
bool isValidUtf8(std::string_view text);

/// The text for a place of one line: U+FFFD for each invalid part, and for each character that would end the line, do
/// something to a terminal, or show the text around it in another order.
std::string oneLine(std::string text);
/// The same for a place of several lines: CR LF and CR become line feeds, which stay, and so do tabs.
std::string plainLines(std::string text);
/// The text that UTF-16 bytes stand for, without the mark at their start, which says the byte order. None for bytes
/// without such a mark; U+FFFD for each invalid part.
std::optional<std::string> fromUTF16(std::string_view bytes);

/// The script that the scalar is written in, by its English name: "Arabic", "Han"; "Emoji" for a picture, "Common" or
/// "Inherited" for what several scripts share.
std::string_view scriptName(char32_t scalar);

/// Whether the first of its letters that has a direction is written from right to left.
bool isRightToLeft(std::string_view text);

/// The columns that a scalar takes in a terminal: two when it is wide, none when it combines or is invisible.
std::size_t columnWidth(char32_t scalar);

/// Number of extended grapheme clusters.
std::size_t characterCount(std::string_view text);
/// The first `count` characters, or all when there are fewer.
std::string_view prefix(std::string_view text, std::size_t count);
/// Calls `body` with each character in turn.
void forEachCharacter(std::string_view text, const std::function<void(std::string_view)>& body);

/// The lines of the text, split at any Unicode line break; empty lines are left out.
std::vector<std::string_view> nonEmptyLines(std::string_view text);
/// The runs of letters and digits in the text, in order.
std::vector<std::string_view> words(std::string_view text);
/// The text up to the first Unicode line break.
std::string_view firstLine(std::string_view text);
/// The parts between any of these ASCII separators, empty parts included.
std::vector<std::string_view> split(std::string_view text, std::string_view separators);

std::string joined(const std::vector<std::string>& parts, std::string_view separator);
std::string replacingAll(std::string_view text, std::string_view what, std::string_view replacement);

}  // namespace ScanKit::Text

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <memory>

#include <simdjson.h>
#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace ScanKit::Text {
namespace {

/// Nearly all text that a scan meets is ASCII, for which the rules of Unicode come down to a few comparisons.
bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

constexpr char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
constexpr char asciiUpper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<int32_t>(text.size())};
}

/// What stands between the scalars that divide it; empty pieces are left out.
template <typename Predicate>
std::vector<std::string_view> piecesBetween(std::string_view text, Predicate divides) {
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t at = i;
        if (divides(nextScalar(text, i))) {
            if (at > begin) {
                pieces.push_back(text.substr(begin, at - begin));
            }
            begin = i;
        }
    }
    if (begin < text.size()) {
        pieces.push_back(text.substr(begin));
    }
    return pieces;
}

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// U+FFFD in place of what ends a line, steers a terminal or turns the text around it, but for the ASCII characters `kept`.
std::string withoutControls(std::string text, std::string_view kept) {
    if (std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; })) {
        return text;
    }
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        const char32_t scalar = nextScalar(text, i);
        const bool isKept = scalar < 0x80 && kept.find(static_cast<char>(scalar)) != std::string_view::npos;
        const bool isHarmful = isControl(scalar) || isLineBreak(scalar) || turnsDirection(scalar);
        if (scalar == 0xFFFD || (isHarmful && !isKept)) {
            result += replacementCharacter;
        } else {
            result.append(text, begin, i - begin);
        }
    }
    return result;
}

template <typename Predicate>
std::string_view trimmedWhere(std::string_view text, Predicate dropped) {
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t next = begin;
        if (!dropped(nextScalar(text, next))) {
            break;
        }
        begin = next;
    }
    std::size_t end = text.size();
    while (end > begin) {
        std::size_t start = end - 1;
        // Back to where the last scalar begins: none has more than three bytes behind its first.
        while (start > begin && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80 && end - start < 4) {
            --start;
        }
        std::size_t next = start;
        // A stray continuation byte does not reach up to the end, and is no white space.
        if (!dropped(nextScalar(text, next)) || next != end) {
            break;
        }
        end = start;
    }
    return text.substr(begin, end - begin);
}

/// Null when ICU has no data for it.
std::unique_ptr<icu::BreakIterator> makeCharacterIterator() {
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::BreakIterator>(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
}

/// One break iterator a thread, copied from the first: making one anew costs far more than copying it.
icu::BreakIterator* characterIterator() {
    static const std::unique_ptr<icu::BreakIterator> first = makeCharacterIterator();
    thread_local const std::unique_ptr<icu::BreakIterator> iterator(first ? first->clone() : nullptr);
    return iterator.get();
}

/// Calls `body` with each character until it returns false.
template <typename Body>
void walkCharacters(std::string_view text, Body body) {
    // In ASCII the pair CR LF is the only character of two. The break iterator takes thirty times as long to say so.
    if (isAscii(text)) {
        for (std::size_t i = 0; i < text.size();) {
            const std::size_t length = text.compare(i, 2, "\r\n") == 0 ? 2 : 1;
            if (!body(text.substr(i, length))) {
                return;
            }
            i += length;
        }
        return;
    }
    icu::BreakIterator* iterator = characterIterator();
    UErrorCode status = U_ZERO_ERROR;
    UText* opened = utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &status);
    if (iterator != nullptr && U_SUCCESS(status)) {
        iterator->setText(opened, status);
        int32_t begin = iterator->first();
        for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next()) {
            if (!body(text.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)))) {
                break;
            }
            begin = end;
        }
    }
    utext_close(opened);
}

}  // namespace

std::string lowercased(std::string_view text) {
    std::string result;
    if (isAscii(text)) {
        result.resize(text.size());
        std::ranges::transform(text, result.begin(), asciiLower);
        return result;
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&result);
    icu::CaseMap::utf8ToLower("", 0, piece(text), sink, nullptr, status);
    return result;
}

std::string uppercased(std::string_view text) {
    std::string result;
    if (isAscii(text)) {
        result.resize(text.size());
        std::ranges::transform(text, result.begin(), asciiUpper);
        return result;
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&result);
    icu::CaseMap::utf8ToUpper("", 0, piece(text), sink, nullptr, status);
    return result;
}

bool isWhitespace(char32_t scalar) {
    if (scalar < 0x80) {
        return scalar == U' ' || (scalar >= U'\t' && scalar <= U'\r');
    }
    return u_isUWhiteSpace(static_cast<UChar32>(scalar)) != 0;
}

bool isAlphanumeric(char32_t scalar) {
    if (scalar < 0x80) {
        const char32_t letter = scalar | 0x20;
        return (letter >= U'a' && letter <= U'z') || (scalar >= U'0' && scalar <= U'9');
    }
    return u_isalnum(static_cast<UChar32>(scalar)) != 0;
}

std::string_view trimmed(std::string_view text) {
    return trimmedWhere(text, isWhitespace);
}

std::string_view trimmedOfBlanks(std::string_view text) {
    return trimmedWhere(text, [](char32_t scalar) {
        return scalar == U'\t' || u_charType(static_cast<UChar32>(scalar)) == U_SPACE_SEPARATOR;
    });
}

std::string_view trimmedOf(std::string_view text, std::string_view characters) {
    const std::size_t begin = text.find_first_not_of(characters);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(characters) + 1 - begin);
}

bool isBlank(std::string_view text) {
    return trimmed(text).empty();
}

std::string_view scriptName(char32_t scalar) {
    const auto character = static_cast<UChar32>(scalar);
    if (u_hasBinaryProperty(character, UCHAR_EXTENDED_PICTOGRAPHIC)) {
        return "Emoji";
    }
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(character, &status);
    return U_SUCCESS(status) ? uscript_getName(script) : "Unknown";
}

bool isRightToLeft(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const UCharDirection direction = u_charDirection(static_cast<UChar32>(nextScalar(text, i)));
        if (direction == U_LEFT_TO_RIGHT) {
            return false;
        }
        if (direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC) {
            return true;
        }
    }
    return false;
}

char32_t nextScalar(std::string_view text, std::size_t& offset) {
    const unsigned char first = static_cast<unsigned char>(text[offset]);
    if (first < 0x80) {
        ++offset;
        return first;
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    // At most four bytes belong to a scalar, so the rest of a huge text never strains ICU's 32-bit lengths.
    const auto available = static_cast<int32_t>(std::min<std::size_t>(text.size() - offset, 4));
    int32_t length = 0;
    UChar32 scalar = 0;
    U8_NEXT_OR_FFFD(bytes + offset, length, available, scalar);
    offset += static_cast<std::size_t>(length);
    return static_cast<char32_t>(scalar);
}

bool isValidUtf8(std::string_view text) {
    return simdjson::validate_utf8(text.data(), text.size());
}

std::string validUtf8(std::string text) {
    if (isValidUtf8(text)) {
        return text;
    }
    std::string result;
    result.reserve(text.size() + 16);
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t begin = i;
        // One for each invalid part, as the Unicode standard recommends, so that the damage stays visible.
        if (nextScalar(text, i) == 0xFFFD) {
            result += replacementCharacter;
        } else {
            result.append(text, begin, i - begin);
        }
    }
    return result;
}

std::string oneLine(std::string text) {
    return withoutControls(std::move(text), "");
}

std::string plainLines(std::string text) {
    // Nearly every declared license is a word or two.
    if (text.find('\r') == std::string::npos) {
        return withoutControls(std::move(text), "\n\t");
    }
    return withoutControls(replacingAll(replacingAll(text, "\r\n", "\n"), "\r", "\n"), "\n\t");
}

std::optional<std::string> fromUTF16(std::string_view bytes) {
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    if (!isLittle && !bytes.starts_with("\xFE\xFF")) {
        return std::nullopt;
    }
    icu::UnicodeString units(static_cast<int32_t>(bytes.size() / 2), 0, 0);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto low = static_cast<unsigned char>(bytes[isLittle ? i : i + 1]);
        const auto high = static_cast<unsigned char>(bytes[isLittle ? i + 1 : i]);
        units.append(static_cast<char16_t>(high << 8 | low));
    }
    std::string text;
    units.toUTF8String(text);
    // Half a unit is left when the text was cut.
    return bytes.size() % 2 == 0 ? text : text + std::string(replacementCharacter);
}

std::size_t columnWidth(char32_t scalar) {
    // Most of what is measured is ASCII, and needs no look into Unicode's tables.
    if (scalar < 0x7F) {
        return scalar < 0x20 ? 0 : 1;
    }
    const auto codePoint = static_cast<UChar32>(scalar);
    // East Asian Width says nothing about what takes no room at all.
    switch (u_charType(codePoint)) {
        case U_NON_SPACING_MARK:
        case U_ENCLOSING_MARK:
        case U_FORMAT_CHAR:
        case U_CONTROL_CHAR:
            return 0;
        default:
            break;
    }
    const int width = u_getIntPropertyValue(codePoint, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    walkCharacters(text, [&](std::string_view) {
        ++count;
        return true;
    });
    return count;
}

std::string_view prefix(std::string_view text, std::size_t count) {
    std::size_t length = 0;
    if (count == 0) {
        return {};
    }
    walkCharacters(text, [&](std::string_view character) {
        length += character.size();
        return --count > 0;
    });
    return text.substr(0, length);
}

void forEachCharacter(std::string_view text, const std::function<void(std::string_view)>& body) {
    walkCharacters(text, [&](std::string_view character) {
        body(character);
        return true;
    });
}

std::vector<std::string_view> nonEmptyLines(std::string_view text) {
    return piecesBetween(text, isLineBreak);
}

std::vector<std::string_view> words(std::string_view text) {
    return piecesBetween(text, [](char32_t scalar) { return !isAlphanumeric(scalar); });
}

std::string_view firstLine(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t at = i;
        if (isLineBreak(nextScalar(text, i))) {
            return text.substr(0, at);
        }
    }
    return text;
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    for (std::size_t end = text.find_first_of(separators); end != std::string_view::npos;
         end = text.find_first_of(separators, begin)) {
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::string joined(const std::vector<std::string>& parts, std::string_view separator) {
    std::string result;
    for (const std::string& part : parts) {
        if (&part != &parts.front()) {
            result += separator;
        }
        result += part;
    }
    return result;
}

std::string replacingAll(std::string_view text, std::string_view what, std::string_view replacement) {
    std::string result;
    std::size_t begin = 0;
    for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, begin)) {
        result += text.substr(begin, at - begin);
        result += replacement;
        begin = at + what.size();
    }
    result += text.substr(begin);
    return result;
}

}  // namespace ScanKit::Text

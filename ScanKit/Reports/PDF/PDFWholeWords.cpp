#include "ScanKit/Reports/PDF/PDFWholeWords.h"

#include <algorithm>

namespace ScanKit {
namespace {

bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Whatever is printed and neither parts words nor, as the end of one, the folders of a path.
bool isOfWord(char c) {
    return c > ' ' && c <= '~' && c != '/';
}

/// Whether letters that are not in ASCII stand before or behind a word. Quotation marks and dashes are no letters.
bool adjoinsLetters(std::string_view text, PDFTextRange word) {
    constexpr std::string_view marks = "\xE2\x80";
    const std::string_view before = text.substr(0, word.begin), behind = text.substr(word.end);
    const auto isForeign = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const bool isBefore =
        !before.empty() && isForeign(before.back()) &&
        !before.substr(before.size() - std::min<std::size_t>(before.size(), 3)).starts_with(marks);
    return isBefore || (!behind.empty() && isForeign(behind.front()) && !behind.starts_with(marks));
}

/// The length of the date that the text begins with, "January 5, 2026" as reports write it; zero where it begins with none.
std::size_t dateLength(std::string_view text) {
    const auto skip = [&](std::size_t from, const auto& isSkipped) {
        while (from < text.size() && isSkipped(text[from])) {
            ++from;
        }
        return from;
    };
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const auto isLetter = [&](char c) { return isLetterOrDigit(c) && !isDigit(c); };
    const std::size_t month = skip(0, isLetter), day = skip(month + 1, isDigit),
                      year = skip(day + 2, isDigit);
    const bool isDate =
        month > 0 && day > month + 1 && year == day + 6 && text[month] == ' ' && text.substr(day, 2) == ", ";
    return isDate ? year : 0;
}

bool fits(std::string_view word, double width, const std::array<double, 128>& widths) {
    // Some pairs of letters stand wider than the letters alone.
    constexpr double toSpare = 1.03;
    double sum = 0;
    for (const char c : word) {
        sum += toSpare * widths[static_cast<std::size_t>(c)];
    }
    return sum <= width;
}

}  // namespace

std::vector<PDFTextRange> wholeWords(std::string_view text, double width,
                                     const std::array<double, 128>& widths) {
    std::vector<PDFTextRange> ranges;
    const auto add = [&](std::size_t begin, std::size_t end) {
        if (fits(text.substr(begin, end - begin), width, widths)) {
            ranges.push_back({begin, end});
            return true;
        }
        return false;
    };
    for (std::size_t end = 0; end < text.size();) {
        const std::size_t begin = end;
        end += dateLength(text.substr(begin));
        bool hasPunctuation = end > begin;
        for (; end < text.size() && isOfWord(text[end]); ++end) {
            hasPunctuation = hasPunctuation || !isLetterOrDigit(text[end]);
        }
        while (end < text.size() && text[end] == '/') {
            hasPunctuation = true;
            ++end;
        }
        end += end == begin ? 1 : 0;
        if (!hasPunctuation || adjoinsLetters(text, {begin, end}) || add(begin, end)) {
            continue;
        }
        for (std::size_t from = begin, to = begin; to < end; ++to) {
            if (to + 1 == end || !isLetterOrDigit(text[to])) {
                add(from, to + 1);
                from = to + 1;
            }
        }
    }
    return ranges;
}

}  // namespace ScanKit

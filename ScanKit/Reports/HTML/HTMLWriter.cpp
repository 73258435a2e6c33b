#include "ScanKit/Reports/HTML/HTMLWriter.h"

#include <algorithm>

namespace ScanKit::Exports {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// What stands for a byte of ASCII; empty for one that stands for itself.
constexpr std::string_view escapeOf(unsigned char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        case '\t':
        case '\n':
        case '\f':
        case '\r':
            return {};
        default:
            return c < 0x20 || c == 0x7F ? replacement : std::string_view();
    }
}

/// Controls of Latin-1 are two bytes of UTF-8. One of them ends a line, and is as good as a line feed here.
constexpr std::string_view latinEscapeOf(unsigned char second) {
    if (second >= 0xA0) {
        return {};
    }
    return second == 0x85 ? "\n" : replacement;
}

bool isWebAddress(std::string_view text) {
    return text.starts_with("https://") || text.starts_with("http://");
}

}  // namespace

void HTMLWriter::text(std::string_view text) {
    // Runs that need nothing are copied whole: license texts are long and hold little to escape.
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool isLatin = c == 0xC2 && i + 1 < text.size();
        const std::string_view escape =
            isLatin ? latinEscapeOf(static_cast<unsigned char>(text[i + 1])) : escapeOf(c);
        if (!escape.empty()) {
            page_.append(text, begin, i - begin);
            page_ += escape;
            i += isLatin ? 1 : 0;
            begin = i + 1;
        }
    }
    page_.append(text, begin);
}

void HTMLWriter::isolated(std::string_view text) {
    // Latin text has the direction of the page already.
    if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        this->text(text);
        return;
    }
    markup("<bdi>");
    this->text(text);
    markup("</bdi>");
}

void HTMLWriter::preformatted(std::string_view text) {
    // The first line feed in such an element is no part of it; one of the text's own must not be lost.
    markup("<pre dir=\"auto\">\n");
    this->text(text);
    markup("</pre>\n");
}

void HTMLWriter::address(std::string_view text) {
    if (!isWebAddress(text)) {
        isolated(text);
        return;
    }
    markup("<a href=\"");
    this->text(text);
    markup("\">");
    isolated(text);
    markup("</a>");
}

}  // namespace ScanKit::Exports

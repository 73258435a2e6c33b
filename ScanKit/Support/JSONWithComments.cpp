#include "ScanKit/Support/JSONWithComments.h"

#include <algorithm>
#include <optional>

namespace ScanKit {
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The place behind the string that begins here.
std::size_t endOfString(std::string_view text, std::size_t start) {
    for (std::size_t i = start + 1; i < text.size(); ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == '"') {
            return i + 1;
        }
    }
    return text.size();
}

/// The place behind the remark that begins here; absent when none does, or when it has no end.
std::optional<std::size_t> endOfRemark(std::string_view text, std::size_t start) {
    const std::string_view rest = text.substr(start);
    if (rest.starts_with("//")) {
        return std::min(text.find_first_of("\r\n", start), text.size());
    }
    const std::size_t end = rest.starts_with("/*") ? text.find("*/", start + 2) : std::string_view::npos;
    return end == std::string_view::npos ? std::nullopt : std::optional(end + 2);
}

}  // namespace

std::string plainJSON(std::string_view text) {
    std::string plain(text);
    // A comma with nothing but blanks behind it so far, and a value before it; the text's length when there is none.
    std::size_t comma = text.size();
    char before = 0;  // the last character that is neither blank nor remark
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (blanks.find(c) != std::string_view::npos) {
            ++i;
            continue;
        }
        if (const auto end = endOfRemark(text, i)) {
            for (; i < *end; ++i) {
                plain[i] = blanks.find(text[i]) == std::string_view::npos ? ' ' : text[i];
            }
            continue;
        }
        if (comma < text.size() && (c == '}' || c == ']')) {
            plain[comma] = ' ';
        }
        comma = text.size();
        if (c == ',' && before != '[' && before != '{' && before != ',' && before != ':') {
            comma = i;
        }
        before = c;
        i = c == '"' ? endOfString(text, i) : i + 1;
    }
    return plain;
}

}  // namespace ScanKit

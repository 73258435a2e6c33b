#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace ScanKit {

/// Bytes of a text.
struct PDFTextRange {
    std::size_t begin = 0, end = 0;
    bool operator==(const PDFTextRange&) const = default;
};

/// Where no line may end: inside of a word that fits into a line, such as `LGPL-3.0-or-later`, for a reader of half of
/// it takes it for another one, or of a date such as `January 5, 2026`. A longer word may be parted behind its punctuation.
/// `widths` are those of the printable characters of ASCII by their codes, in the unit of `width`; words with others
/// are left as they are.
std::vector<PDFTextRange> wholeWords(std::string_view text, double width,
                                     const std::array<double, 128>& widths);

}  // namespace ScanKit

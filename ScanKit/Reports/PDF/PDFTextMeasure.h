#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"

#include <cstddef>
#include <vector>

namespace ScanKit {

/// How texts break into lines and how wide they are, which only whoever has the fonts can tell.
class PDFTextMeasure {
public:
    virtual ~PDFTextMeasure() = default;

    struct TextLine {
        std::size_t end = 0;  ///< byte offset into the text behind the line's last character
        double height = 0;
        double baseline = 0;  ///< from the line's top
        bool operator==(const TextLine&) const = default;
    };
    /// The lines into which the text breaks at this width: at least one. Takes time in proportion to the
    /// length of the text, however long it is.
    virtual std::vector<TextLine> lines(const PDFPages::AttributedString& string, double width) = 0;
    /// The width of the text on one line.
    virtual double width(const PDFPages::AttributedString& string) = 0;
};

}  // namespace ScanKit

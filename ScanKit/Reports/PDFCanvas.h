#pragma once

#include "ScanKit/Reports/PDFReport.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ScanKit {

/// Measures text and draws pages with the system's fonts. Making one loads the list of fonts; nothing does so
/// before. For one thread at a time; several may be in use on several threads. On a machine without any font
/// texts take room but are not drawn, and the document is still valid.
class PDFCanvas {
public:
    PDFCanvas();
    ~PDFCanvas();
    PDFCanvas(const PDFCanvas&) = delete;
    PDFCanvas& operator=(const PDFCanvas&) = delete;

    struct TextLine {
        std::size_t end = 0;  ///< byte offset into the text behind the line's last character
        double height = 0;
        double baseline = 0;  ///< from the line's top
        bool operator==(const TextLine&) const = default;
    };
    /// The lines into which the text breaks at this width: at least one. Takes time in proportion to the
    /// length of the text, however long it is.
    std::vector<TextLine> lines(const PDFReport::AttributedString& string, double width);
    /// The width of the text on one line.
    double width(const PDFReport::AttributedString& string);

    /// The document as bytes. The same report gives the same bytes wherever the same fonts are.
    std::string draw(const PDFReport& report);

private:
    struct Fonts;
    std::unique_ptr<Fonts> fonts_;
};

}  // namespace ScanKit

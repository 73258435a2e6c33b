#pragma once

#include "ScanKit/Reports/PDFReport.h"
#include "ScanKit/Reports/PDFText.h"

#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// Fills pages from the top: keeps the place that was reached, and begins a new page when the next block does
/// not fit any more.
class PDFLayout {
public:
    explicit PDFLayout(PDFCanvas& canvas) : canvas_(canvas), pages_(1) {}

    PDFCanvas& canvas() { return canvas_; }
    PDFReport::Page& page() { return pages_.back(); }
    /// Where the next block begins, from the top of the page.
    double y() const { return y_; }
    /// The height that is left on this page.
    double room() const { return PDFReport::contentEnd - y_; }
    /// The height that an empty page has for blocks.
    static constexpr double pageRoom = PDFReport::contentEnd - PDFReport::margin;

    void skip(double height) { y_ += height; }
    void newPage();
    /// Makes sure that a block of this height, or of a whole page when it is higher, can be placed at `y()`,
    /// on a new page if need be. A heading that waits is placed before it, on the same page.
    void makeRoom(double height);

    /// A heading, also for the outline. It waits for the block that follows, so that it never ends a page.
    void heading(std::string title);
    /// Paragraphs over the whole width, over several pages when they are longer than a good part of one.
    void text(std::vector<PDFParagraph> paragraphs);
    /// One such paragraph.
    void text(PDFReport::AttributedString string);

    std::vector<PDFReport::Page> takePages() { return std::move(pages_); }
    std::vector<PDFReport::Bookmark> takeOutline() { return std::move(outline_); }

private:
    void placeHeading();

    PDFCanvas& canvas_;
    std::vector<PDFReport::Page> pages_;
    std::vector<PDFReport::Bookmark> outline_;
    std::optional<std::string> waitingHeading_;
    double y_ = PDFReport::margin;
};

}  // namespace ScanKit

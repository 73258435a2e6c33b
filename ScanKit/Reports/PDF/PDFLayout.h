#pragma once

#include "ScanKit/Reports/PDF/PDFPages.h"
#include "ScanKit/Reports/PDF/PDFText.h"

#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// Fills pages from the top: keeps the place that was reached, and begins a new page when the next block does
/// not fit any more.
class PDFLayout {
public:
    PDFLayout(PDFTextMeasure& measure, const PDFPages::Sheet& sheet)
        : measure_(measure), sheet_(sheet), pages_(1) {}

    const PDFPages::Sheet& sheet() const { return sheet_; }

    PDFTextMeasure& measure() const { return measure_; }
    PDFPages::Page& page() { return pages_.back(); }
    /// Where the next block begins, from the top of the page.
    double y() const { return y_; }
    /// The height that is left on this page.
    double room() const { return sheet_.contentEnd() - y_; }

    /// A line of a heading's font and the gap below it, with room to spare for the fallback fonts of other scripts.
    static constexpr double headingHeight = 30;
    /// A line of the name that a page repeats, and the gap below it.
    static constexpr double nameHeight = 20;
    /// How much of a text of this height must stand on the page on which it begins: all of one that is too short to be parted.
    /// A longer one is, for else it would leave a good part of the page before it blank.
    static double heightOfBeginning(double height);

    void skip(double height) { y_ += height; }
    void newPage();
    /// Makes sure that a block of this height, or of a whole page when it is higher, can be placed at `y()`,
    /// on a new page if need be. A heading that waits is placed before it, on the same page.
    void makeRoom(double height);

    /// Makes a new last part of another one, which may be the document itself. Returns its place in the structure.
    std::size_t addElement(PDFPages::Role role, std::size_t parent = 0);
    /// Makes each paragraph a part of this one, in which a link is a part of its own. List items in a row make a list;
    /// a paragraph without text makes nothing.
    void addElements(std::vector<PDFParagraph>& paragraphs, std::size_t parent = 0);
    /// Makes the paragraph's text all that this part consists of.
    void fillElement(std::size_t element, PDFParagraph& paragraph);

    /// A heading, also for the outline. It waits for the block that follows, so that it never ends a page.
    void heading(std::string title);
    /// A new page that begins with the name of what goes on there. The name is no part of the document: who listens to it
    /// has heard it.
    void newPageContinuing(const std::string& name);
    /// Paragraphs over the whole width, over several pages when they are long enough for each to get more than a few
    /// lines; each further page repeats the name, unless it is empty.
    void text(std::vector<PDFParagraph> paragraphs, const std::string& name = "");
    /// One such paragraph.
    void text(PDFPages::AttributedString string, PDFPages::Role role = PDFPages::Role::paragraph);

    std::vector<PDFPages::Page> takePages() { return std::move(pages_); }
    std::vector<PDFPages::Bookmark> takeOutline() { return std::move(outline_); }
    std::vector<PDFPages::Element> takeStructure() { return std::move(structure_); }

private:
    void placeHeading();

    PDFTextMeasure& measure_;
    PDFPages::Sheet sheet_;
    std::vector<PDFPages::Page> pages_;
    std::vector<PDFPages::Bookmark> outline_;
    std::vector<PDFPages::Element> structure_{{}};
    std::optional<PDFParagraph> waitingHeading_;
    double y_ = PDFPages::margin;
};

}  // namespace ScanKit

#include "ScanKit/Reports/PDF/PDFLayout.h"

#include <algorithm>
#include <utility>

namespace ScanKit {
namespace {

constexpr PDFStyle headingStyle{.font = {.size = 14, .bold = true}, .colour = PDFColours::ink};
constexpr double gapBelowHeading = 8;
/// A line of the heading's font and the gap below it, with room to spare for the fallback fonts of other
/// scripts.
constexpr double headingHeight = 30;
/// Text up to this height is not parted by the end of a page.
constexpr double heldTogether = PDFLayout::pageRoom / 4;

}  // namespace

void PDFLayout::newPage() {
    pages_.emplace_back();
    y_ = PDFPages::margin;
}

void PDFLayout::makeRoom(double height) {
    const double wanted = height + (waitingHeading_ ? headingHeight : 0);
    // On an empty page there is nothing to gain from another one.
    if (room() < wanted && y_ > PDFPages::margin) {
        newPage();
    }
    placeHeading();
}

void PDFLayout::heading(std::string title) {
    waitingHeading_ = std::move(title);
}

void PDFLayout::placeHeading() {
    if (!waitingHeading_) {
        return;
    }
    outline_.push_back({.title = *waitingHeading_, .page = pages_.size() - 1, .y = y_});
    PDFTextBlock block({{.string = headingStyle(*waitingHeading_)}}, PDFPages::contentWidth, measure_);
    y_ += block.place(page(), {PDFPages::margin, y_}, room()) + gapBelowHeading;
    waitingHeading_.reset();
}

void PDFLayout::text(std::vector<PDFParagraph> paragraphs) {
    PDFTextBlock block(std::move(paragraphs), PDFPages::contentWidth, measure_);
    makeRoom(std::min(block.height(), heldTogether));
    while (!block.isPlaced()) {
        y_ += block.place(page(), {PDFPages::margin, y_}, room());
        if (!block.isPlaced()) {
            newPage();
        }
    }
}

void PDFLayout::text(PDFPages::AttributedString string) {
    std::vector<PDFParagraph> paragraphs;
    paragraphs.push_back({.string = std::move(string)});
    text(std::move(paragraphs));
}

}  // namespace ScanKit

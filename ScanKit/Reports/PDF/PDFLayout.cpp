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

std::size_t PDFLayout::addElement(PDFPages::Role role, std::size_t parent) {
    structure_.push_back({.role = role, .parent = parent});
    return structure_.size() - 1;
}

void PDFLayout::fillElement(std::size_t element, PDFParagraph& paragraph) {
    paragraph.element = paragraph.string.link ? addElement(PDFPages::Role::link, element) : element;
}

void PDFLayout::addElements(std::vector<PDFParagraph>& paragraphs, std::size_t parent) {
    for (PDFParagraph& paragraph : paragraphs) {
        fillElement(addElement(paragraph.role, parent), paragraph);
    }
}

void PDFLayout::heading(std::string title) {
    // Its part is made here: what is added before it is placed stands below it all the same.
    waitingHeading_ = {.string = headingStyle(title), .role = PDFPages::Role::heading2};
    waitingHeading_->element = addElement(waitingHeading_->role);
}

void PDFLayout::placeHeading() {
    if (!waitingHeading_) {
        return;
    }
    outline_.push_back({.title = waitingHeading_->string.text, .page = pages_.size() - 1, .y = y_});
    PDFTextBlock block({*waitingHeading_}, PDFPages::contentWidth, measure_);
    y_ += block.place(page(), {PDFPages::margin, y_}, room()) + gapBelowHeading;
    waitingHeading_.reset();
}

void PDFLayout::text(std::vector<PDFParagraph> paragraphs) {
    addElements(paragraphs);
    PDFTextBlock block(std::move(paragraphs), PDFPages::contentWidth, measure_);
    makeRoom(std::min(block.height(), heldTogether));
    while (!block.isPlaced()) {
        y_ += block.place(page(), {PDFPages::margin, y_}, room());
        if (!block.isPlaced()) {
            newPage();
        }
    }
}

void PDFLayout::text(PDFPages::AttributedString string, PDFPages::Role role) {
    std::vector<PDFParagraph> paragraphs;
    paragraphs.push_back({.string = std::move(string), .role = role});
    text(std::move(paragraphs));
}

}  // namespace ScanKit

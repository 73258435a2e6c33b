#include "ScanKit/Reports/PDF/PDFLayout.h"

#include <algorithm>
#include <utility>

namespace ScanKit {
namespace {

constexpr PDFStyle headingStyle{.font = {.size = 14, .bold = true}, .colour = PDFColours::ink};
constexpr double gapBelowHeading = 8;
constexpr PDFStyle nameStyle{.font = {.size = 9, .bold = true}, .colour = PDFColours::quiet};
/// The least that a long text begins with on a page, or ends with on one, so that none has closing words alone.
constexpr double leastOnAPage = 100;

}  // namespace

void PDFLayout::newPage() {
    pages_.emplace_back();
    y_ = PDFPages::margin;
}

double PDFLayout::heightOfBeginning(double height) {
    return height <= 2 * leastOnAPage ? height : leastOnAPage;
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
    using enum PDFPages::Role;
    std::size_t inList = 0;  // 0 while no list is open
    for (PDFParagraph& paragraph : paragraphs) {
        if (paragraph.string.text.empty()) {
            continue;  // A part must hold something.
        }
        const bool isItem = paragraph.role == listItem;
        inList = !isItem ? 0 : inList != 0 ? inList : addElement(list, parent);
        fillElement(
            isItem ? addElement(listBody, addElement(listItem, inList)) : addElement(paragraph.role, parent),
            paragraph);
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
    PDFTextBlock block({*waitingHeading_}, sheet_.contentWidth(), measure_);
    y_ += block.place(page(), {PDFPages::margin, y_}, room()) + gapBelowHeading;
    waitingHeading_.reset();
}

void PDFLayout::newPageContinuing(const std::string& name) {
    newPage();
    PDFTextBlock block({{.string = nameStyle(name + ", continued")}}, sheet_.contentWidth(), measure_);
    block.place(page(), {PDFPages::margin, y_}, nameHeight);
    y_ += nameHeight;
}

void PDFLayout::text(std::vector<PDFParagraph> paragraphs, const std::string& name) {
    addElements(paragraphs);
    PDFTextBlock block(std::move(paragraphs), sheet_.contentWidth(), measure_);
    makeRoom(heightOfBeginning(block.height()));
    while (!block.isPlaced()) {
        const bool goesOn = block.height() > room();
        const double most = goesOn ? std::min(room(), block.height() - leastOnAPage) : room();
        y_ += block.place(page(), {PDFPages::margin, y_}, most);
        if (!block.isPlaced() && name.empty()) {
            newPage();
        } else if (!block.isPlaced()) {
            newPageContinuing(name);
        }
    }
}

void PDFLayout::text(PDFPages::AttributedString string, PDFPages::Role role) {
    std::vector<PDFParagraph> paragraphs;
    paragraphs.push_back({.string = std::move(string), .role = role});
    text(std::move(paragraphs));
}

}  // namespace ScanKit

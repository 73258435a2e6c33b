#include "ScanKit/Reports/PDF/PDFTable.h"

#include <algorithm>
#include <utility>

namespace ScanKit {
namespace {

constexpr PDFStyle headerStyle{.font = {.size = 7.5, .bold = true}, .colour = PDFColours::quiet};
constexpr double padding = 4;  ///< above and below the text of a row
constexpr double columnGap = 10;
/// The least height that a row higher than a page begins with at the foot of one.
constexpr double smallestPiece = 80;

/// The line on which the first texts of all cells stand, from the top of the cells.
double baselineOf(const std::vector<PDFTextBlock>& row) {
    double baseline = 0;
    for (const PDFTextBlock& cell : row) {
        baseline = std::max(baseline, cell.baseline());
    }
    return baseline;
}

double heightOf(const std::vector<PDFTextBlock>& row) {
    const double baseline = baselineOf(row);
    double height = 0;
    for (const PDFTextBlock& cell : row) {
        height = std::max(height, baseline - cell.baseline() + cell.height());
    }
    return height + 2 * padding;
}

bool isPlaced(const std::vector<PDFTextBlock>& row) {
    return std::ranges::all_of(row, &PDFTextBlock::isPlaced);
}

}  // namespace

PDFTable::PDFTable(PDFLayout& layout, std::vector<PDFPages::Column> columns)
    : layout_(layout), columns_(std::move(columns)), headerHeight_(heightOf(rowOf(titles()))) {}

double PDFTable::columnStart(std::size_t column) const {
    double start = PDFPages::margin;
    for (std::size_t i = 0; i < column; ++i) {
        start += columns_[i].width * PDFPages::contentWidth;
    }
    return start;
}

double PDFTable::cellWidth(std::size_t column) const {
    const bool isLast = column + 1 == columns_.size();
    return columns_[column].width * PDFPages::contentWidth - (isLast ? 0 : columnGap);
}

PDFTable::Row PDFTable::rowOf(std::vector<Cell> cells) const {
    Row row;
    row.reserve(cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        for (PDFParagraph& paragraph : cells[i]) {
            paragraph.right = columns_[i].right;
        }
        row.emplace_back(std::move(cells[i]), cellWidth(i), layout_.measure());
    }
    return row;
}

void PDFTable::placePiece(Row& row, const PDFPages::Colour& rule) {
    const double baseline = baselineOf(row);
    const double room = layout_.room() - 2 * padding;
    double height = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (!row[i].isPlaced()) {
            // First lines of all cells stand on one line, whatever their fonts.
            const double shift = baseline - row[i].baseline();
            const PDFPages::Point corner{columnStart(i), layout_.y() + padding + shift};
            height = std::max(height, shift + row[i].place(layout_.page(), corner, room - shift));
        }
    }
    layout_.skip(height + 2 * padding);
    layout_.page().emplace_back(PDFPages::Line{.from = {PDFPages::margin, layout_.y()},
                                               .to = {PDFPages::margin + PDFPages::contentWidth, layout_.y()},
                                               .colour = rule});
}

std::vector<PDFTable::Cell> PDFTable::titles() const {
    std::vector<Cell> titles;
    for (const PDFPages::Column& column : columns_) {
        titles.push_back({{.string = headerStyle(column.title)}});
    }
    return titles;
}

void PDFTable::addElements(std::vector<Cell>& cells, bool areTitles) {
    using enum PDFPages::Role;
    const std::size_t inRow = layout_.addElement(row, *element_);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const PDFPages::Role role = areTitles ? columnHeader : columns_[i].namesRow ? rowHeader : cell;
        const std::size_t inCell = layout_.addElement(role, inRow);
        if (cells[i].size() == 1) {
            layout_.fillElement(inCell, cells[i].front());
        } else {
            layout_.addElements(cells[i], inCell);
        }
    }
}

void PDFTable::placeTitles(std::vector<Cell> cells) {
    Row header = rowOf(std::move(cells));
    placePiece(header, PDFColours::strongRule);
}

void PDFTable::goOnOnNewPage() {
    layout_.newPage();
    // Titles that come again are no part of the document: who listens to it has heard them.
    placeTitles(titles());
}

void PDFTable::addRow(std::vector<Cell> cells) {
    const bool isFirst = !element_;
    std::vector<Cell> firstTitles = isFirst ? titles() : std::vector<Cell>{};
    if (isFirst) {
        element_ = layout_.addElement(PDFPages::Role::table);
        addElements(firstTitles, true);
    }
    addElements(cells, false);
    Row row = rowOf(std::move(cells));
    const double height = heightOf(row);
    // A row that no page can hold is parted; every other one moves to the next page whole.
    const double least = height > PDFLayout::pageRoom - headerHeight_ ? smallestPiece : height;
    if (isFirst) {
        layout_.makeRoom(headerHeight_ + least);
        placeTitles(std::move(firstTitles));
    } else if (least > layout_.room()) {
        goOnOnNewPage();
    }
    placePiece(row, PDFColours::rule);
    while (!isPlaced(row)) {
        goOnOnNewPage();
        placePiece(row, PDFColours::rule);
    }
}

}  // namespace ScanKit

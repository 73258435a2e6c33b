#include "ScanKit/Reports/PDF/PDFTable.h"

#include <algorithm>
#include <utility>

namespace ScanKit {
namespace {

constexpr PDFStyle headerStyle{.font = {.size = 7.5, .bold = true}, .colour = PDFColours::quiet};
constexpr double padding = 4;  ///< above and below the text of a row
constexpr double noteGap = 2;  ///< above the notes of a row
constexpr double columnGap = 10;
/// The least height that a row higher than a page begins with at the foot of one.
constexpr double smallestPiece = 80;

/// The line on which the first texts of all cells stand, from the top of the cells.
double baselineOf(const std::vector<PDFTextBlock>& cells) {
    double baseline = 0;
    for (const PDFTextBlock& cell : cells) {
        baseline = std::max(baseline, cell.baseline());
    }
    return baseline;
}

double heightOf(const std::vector<PDFTextBlock>& cells) {
    const double baseline = baselineOf(cells);
    double height = 0;
    for (const PDFTextBlock& cell : cells) {
        height = std::max(height, baseline - cell.baseline() + cell.height());
    }
    return height;
}

bool arePlaced(const std::vector<PDFTextBlock>& cells) {
    return std::ranges::all_of(cells, &PDFTextBlock::isPlaced);
}

}  // namespace

double PDFTable::Row::height() const {
    return heightOf(cells) + (notes ? noteGap + notes->height() : 0) + 2 * padding;
}

bool PDFTable::Row::isPlaced() const {
    return arePlaced(cells) && (!notes || notes->isPlaced());
}

PDFTable::PDFTable(PDFLayout& layout, std::string name, std::vector<PDFPages::Column> columns,
                   std::size_t noteColumn)
    : layout_(layout),
      name_(std::move(name)),
      columns_(std::move(columns)),
      noteColumn_(noteColumn),
      headerHeight_(heightOf(blocksOf(titles())) + 2 * padding) {}

double PDFTable::columnStart(std::size_t column) const {
    double start = PDFPages::margin;
    for (std::size_t i = 0; i < column; ++i) {
        start += columns_[i].width * layout_.sheet().contentWidth();
    }
    return start;
}

double PDFTable::cellWidth(std::size_t column) const {
    const bool isLast = column + 1 == columns_.size();
    return columns_[column].width * layout_.sheet().contentWidth() - (isLast ? 0 : columnGap);
}

double PDFTable::noteWidth() const {
    return PDFPages::margin + layout_.sheet().contentWidth() - columnStart(noteColumn_);
}

std::vector<PDFTextBlock> PDFTable::blocksOf(std::vector<Cell> cells) const {
    std::vector<PDFTextBlock> blocks;
    blocks.reserve(cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        for (PDFParagraph& paragraph : cells[i]) {
            paragraph.right = columns_[i].right;
        }
        blocks.emplace_back(std::move(cells[i]), cellWidth(i), layout_.measure());
    }
    return blocks;
}

std::vector<PDFTable::Cell> PDFTable::titles() const {
    std::vector<Cell> titles;
    for (const PDFPages::Column& column : columns_) {
        titles.push_back({{.string = headerStyle(column.title)}});
    }
    return titles;
}

void PDFTable::addElements(std::vector<Cell>& cells, std::vector<PDFParagraph>& notes, bool areTitles) {
    using enum PDFPages::Role;
    const std::size_t inRow = layout_.addElement(row, *element_);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const PDFPages::Role role = areTitles ? columnHeader : columns_[i].namesRow ? rowHeader : cell;
        const std::size_t inCell = layout_.addElement(role, inRow);
        const bool hasNotes = i + 1 == cells.size() && !notes.empty();
        if (cells[i].size() == 1 && !hasNotes) {
            layout_.fillElement(inCell, cells[i].front());
        } else {
            layout_.addElements(cells[i], inCell);
        }
        if (hasNotes) {
            layout_.addElements(notes, inCell);
        }
    }
}

void PDFTable::addRow(std::vector<Cell> cells, std::vector<PDFParagraph> notes) {
    if (!element_) {
        element_ = layout_.addElement(PDFPages::Role::table);
        std::vector<Cell> firstTitles = titles();
        std::vector<PDFParagraph> none;
        addElements(firstTitles, none, true);
        header_ = {.cells = blocksOf(std::move(firstTitles))};
    }
    addElements(cells, notes, false);
    Row row{.cells = blocksOf(std::move(cells))};
    if (!notes.empty()) {
        row.notes.emplace(std::move(notes), noteWidth(), layout_.measure());
    }
    rows_.push_back(std::move(row));
}

bool PDFTable::mustBeParted(double height) const {
    return height > layout_.sheet().contentHeight() - headerHeight_ - PDFLayout::nameHeight;
}

double PDFTable::roomFor(std::size_t row, double heightOfWhatFollows) const {
    const double height = rows_[row].height();
    if (mustBeParted(height)) {
        return smallestPiece;
    }
    // The first two rows stay together, and so do the last two: of three rows all.
    const std::size_t count = rows_.size();
    const bool isFirst = row == 0, isLastButOne = row + 2 == count;
    const std::size_t end = isFirst && count <= 3 ? count : isFirst || isLastButOne ? row + 2 : row + 1;
    double together = 0;
    for (std::size_t i = row; i < std::min(end, count); ++i) {
        together += rows_[i].height();
    }
    const bool areLast = end == count && (isFirst || isLastButOne);
    const double withWhatFollows = together + (areLast ? heightOfWhatFollows : 0);
    return !mustBeParted(withWhatFollows) ? withWhatFollows : !mustBeParted(together) ? together : height;
}

void PDFTable::placePiece(Row& row, const PDFPages::Colour& rule) {
    const double baseline = baselineOf(row.cells);
    const double room = layout_.room() - 2 * padding;
    double height = 0;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
        PDFTextBlock& cell = row.cells[i];
        if (!cell.isPlaced()) {
            // First lines of all cells stand on one line, whatever their fonts.
            const double shift = baseline - cell.baseline();
            const PDFPages::Point corner{columnStart(i), layout_.y() + padding + shift};
            height = std::max(height, shift + cell.place(layout_.page(), corner, room - shift));
        }
    }
    if (row.notes && !row.notes->isPlaced() && arePlaced(row.cells)) {
        const double gap = height > 0 ? noteGap : 0;
        // A line that does not fit any more waits for the next page, unless nothing else is on this one.
        if (height == 0 || row.notes->nextHeight() <= room - height - gap) {
            const PDFPages::Point corner{columnStart(noteColumn_), layout_.y() + padding + height + gap};
            height += gap + row.notes->place(layout_.page(), corner, room - height - gap);
        }
    }
    layout_.skip(height + 2 * padding);
    const double right = PDFPages::margin + layout_.sheet().contentWidth();
    layout_.page().emplace_back(
        PDFPages::Line{.from = {PDFPages::margin, layout_.y()}, .to = {right, layout_.y()}, .colour = rule});
}

void PDFTable::goOnOnNewPage() {
    layout_.newPageContinuing(name_);
    // Like the name, titles that come again are no part of the document.
    Row header{.cells = blocksOf(titles())};
    placePiece(header, PDFColours::strongRule);
}

void PDFTable::place(double heightOfWhatFollows) {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const double room = roomFor(i, heightOfWhatFollows);
        if (header_) {
            layout_.makeRoom(headerHeight_ + room);
            placePiece(*header_, PDFColours::strongRule);
            header_.reset();
        } else if (room > layout_.room()) {
            goOnOnNewPage();
        }
        placePiece(rows_[i], PDFColours::rule);
        while (!rows_[i].isPlaced()) {
            goOnOnNewPage();
            placePiece(rows_[i], PDFColours::rule);
        }
    }
    rows_.clear();
}

}  // namespace ScanKit

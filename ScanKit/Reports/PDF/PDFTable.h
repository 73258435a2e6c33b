#pragma once

#include "ScanKit/Reports/PDF/PDFLayout.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// A table over the content width: a header row at the top of each of its pages, a thin rule below each row. On further
/// pages it repeats its name. A row stands on one page unless it is higher than a page; no page begins or ends with a
/// single row of a longer table.
class PDFTable {
public:
    /// The paragraphs of one cell.
    using Cell = std::vector<PDFParagraph>;

    /// Nothing is placed before `place`. The columns' widths add up to 1. What stands below a row's cells begins
    /// where the column `noteColumn` does.
    PDFTable(PDFLayout& layout, std::string name, std::vector<PDFPages::Column> columns,
             std::size_t noteColumn = 0);

    /// A row with one cell for each column. `notes` stand below the cells over the width of the table, and belong to
    /// the last cell.
    void addRow(std::vector<Cell> cells, std::vector<PDFParagraph> notes = {});

    /// Places all rows; a table without any leaves no trace. The last rows stay on one page with what follows, as far
    /// as that is no higher than this.
    void place(double heightOfWhatFollows = 0);

private:
    struct Row {
        std::vector<PDFTextBlock> cells;
        std::optional<PDFTextBlock> notes;
        double height() const;
        bool isPlaced() const;
    };

    std::vector<PDFTextBlock> blocksOf(std::vector<Cell> cells) const;
    /// Makes the cells a row of the table's part of the document.
    void addElements(std::vector<Cell>& cells, std::vector<PDFParagraph>& notes, bool areTitles);
    double columnStart(std::size_t column) const;
    double cellWidth(std::size_t column) const;
    double noteWidth() const;
    /// Whether a row is higher than any page, and its beginning may stand anywhere.
    bool mustBeParted(double height) const;
    /// The height that must be left for the row to be placed where the last one ends.
    double roomFor(std::size_t row, double heightOfWhatFollows) const;
    /// Places what fits of the row on this page, with the rule below it.
    void placePiece(Row& row, const PDFPages::Colour& rule);
    std::vector<Cell> titles() const;
    void goOnOnNewPage();

    PDFLayout& layout_;
    std::string name_;
    std::vector<PDFPages::Column> columns_;
    std::size_t noteColumn_;
    double headerHeight_;
    std::optional<std::size_t> element_;  ///< of the structure; there since the first row
    std::optional<Row> header_;           ///< likewise, until it is placed
    std::vector<Row> rows_;
};

}  // namespace ScanKit

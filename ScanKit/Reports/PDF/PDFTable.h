#pragma once

#include "ScanKit/Reports/PDF/PDFLayout.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace ScanKit {

/// A table over the content width: a header row at the top of each of its pages, a thin rule below each row.
/// A row stands on one page unless it is higher than a page.
class PDFTable {
public:
    /// The paragraphs of one cell.
    using Cell = std::vector<PDFParagraph>;

    /// Nothing is placed before the first row. The columns' widths add up to 1.
    PDFTable(PDFLayout& layout, std::vector<PDFPages::Column> columns);

    /// A row with one cell for each column.
    void addRow(std::vector<Cell> cells);

private:
    using Row = std::vector<PDFTextBlock>;

    Row rowOf(std::vector<Cell> cells) const;
    /// Makes the cells a row of the table's part of the document.
    void addElements(std::vector<Cell>& cells, bool areTitles);
    double columnStart(std::size_t column) const;
    double cellWidth(std::size_t column) const;
    /// Places what fits of the row on this page, with the rule below it.
    void placePiece(Row& row, const PDFPages::Colour& rule);
    std::vector<Cell> titles() const;
    void placeTitles(std::vector<Cell> cells);
    void goOnOnNewPage();

    PDFLayout& layout_;
    std::vector<PDFPages::Column> columns_;
    double headerHeight_;
    std::optional<std::size_t> element_;  ///< of the structure; there since the first row
};

}  // namespace ScanKit

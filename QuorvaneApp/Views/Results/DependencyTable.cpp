#include "QuorvaneApp/Views/Results/DependencyTable.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/DependencyTableModel.h"
#include "QuorvaneApp/Views/Controls/PaddedStyle.h"
#include "QuorvaneApp/Views/Results/DependencyDelegate.h"
#include "ScanKit/Model/EnumerationTable.h"

#include <algorithm>
#include <array>

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStringList>

namespace {

constexpr int rowPadding = 10;

/// A longer selection is not carried over to other rows: scattered anew, each of its rows is a range of its
/// own, which takes the view far longer than a frame. The row that the details show is kept in any case.
constexpr std::size_t mostKeptRows = 1000;

/// The columns whose words are known are as wide as these; the others share what is left.
struct ColumnWidth {
    DependencyColumn value;
    int share;                ///< of what is left, in hundredths; 0 for a column as wide as its words
    int leastCharacters;      ///< of a column that shares
    const char* longestWord;  ///< of a column that does not
};
constexpr auto columnWidths = std::to_array<ColumnWidth>({
    {DependencyColumn::package, 30, 14, ""},
    {DependencyColumn::version, 13, 8, ""},
    {DependencyColumn::ecosystem, 0, 0, "Swift packages"},
    {DependencyColumn::license, 25, 12, ""},
    {DependencyColumn::foundBy, 0, 0, "Metadata + file"},
    {DependencyColumn::flag, 32, 18, ""},
});
static_assert(ScanKit::hasRowForEachEnumerator(columnWidths), "each enumerator needs its row here");

constexpr int cellPadding = 24;

}  // namespace

DependencyTable::DependencyTable(AppModel& model, QWidget* parent)
    : QTableView(parent), model_(&model), rows_(new DependencyTableModel(model, this)) {
    setObjectName(QStringLiteral("dependencyTable"));
    setAccessibleName(tr("Packages"));
    connect(rows_, &QAbstractItemModel::modelAboutToBeReset, this, &DependencyTable::rememberPlace);
    setModel(rows_);
    setItemDelegate(new DependencyDelegate(this));
    PaddedStyle::applyTo(*this);
    arrangeColumns();
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    connect(rows_, &QAbstractItemModel::modelReset, this, &DependencyTable::restorePlace);
    connect(model_, &AppModel::selectionChanged, this, &DependencyTable::showModelSelection);
}

void DependencyTable::arrangeColumns() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    QHeaderView& header = *horizontalHeader();
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header.setHighlightSections(false);
    header.setSortIndicatorClearable(true);
    header.setSortIndicator(-1, Qt::AscendingOrder);
    header.setMinimumSectionSize(fontMetrics().averageCharWidth() * 6);
    setSortingEnabled(true);
}

void DependencyTable::sortByResultOrder() {
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

void DependencyTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        shareWidth();
    }
}

void DependencyTable::shareWidth() {
    int left = viewport()->width();
    for (const ColumnWidth& width : columnWidths) {
        if (width.share == 0) {
            const int needed =
                fontMetrics().horizontalAdvance(QLatin1StringView(width.longestWord)) + cellPadding;
            setColumnWidth(static_cast<int>(width.value), needed);
            left -= needed;
        }
    }
    for (const ColumnWidth& width : columnWidths) {
        if (width.share != 0) {
            const int least = width.leastCharacters * fontMetrics().averageCharWidth();
            setColumnWidth(static_cast<int>(width.value), std::max(left * width.share / 100, least));
        }
    }
}

void DependencyTable::copy() {
    const QString text = selectedText();
    if (!text.isEmpty()) {
        QGuiApplication::clipboard()->setText(text);
    }
}

QString DependencyTable::selectedText() const {
    QStringList lines;
    for (const int row : selectedRows()) {
        lines.push_back(rows_->rowText(row));
    }
    return lines.join(QLatin1Char('\n'));
}

std::vector<int> DependencyTable::selectedRows() const {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::ranges::sort(rows);
    rows.erase(std::ranges::unique(rows).begin(), rows.end());
    return rows;
}

void DependencyTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (isRestoring_) {
        return;
    }
    const QModelIndex current = currentIndex();
    const bool isSelected = current.isValid() && selectionModel()->isRowSelected(current.row());
    if (isSelected) {
        model_->selectRow(rows_->resultRow(current.row()));
    } else if (!selectionModel()->hasSelection()) {
        model_->selectRow({});
    }
}

void DependencyTable::rememberPlace() {
    keptProject_ = rows_->project();
    keptRows_.clear();
    const std::vector<int> selected = selectedRows();
    if (selected.size() <= mostKeptRows) {
        for (const int row : selected) {
            keptRows_.push_back(rows_->resultRow(row));
        }
    }
    const int top = rowAt(0);
    keptTop_ = top >= 0 && verticalScrollBar()->value() > 0 ? rows_->resultRow(top) : -1;
    isRestoring_ = true;
}

/// Rows of a result mean the same before and after, unless a scan brought another result: then only what the
/// application's model found again stays selected.
void DependencyTable::restorePlace() {
    if (keptProject_ != rows_->project()) {
        keptRows_.clear();
        keptTop_ = -1;
    }
    if (model_->selectedRow()) {
        keptRows_.push_back(*model_->selectedRow());
    }
    std::vector<int> tableRows;
    for (const int row : keptRows_) {
        if (const auto tableRow = rows_->tableRow(row)) {
            tableRows.push_back(*tableRow);
        }
    }
    std::ranges::sort(tableRows);
    select(tableRows);
    keptProject_.reset();
    isRestoring_ = false;
}

/// Long selections are put together from runs of neighbours: one range for each row would be slow.
void DependencyTable::select(const std::vector<int>& tableRows) {
    QItemSelection selection;
    for (std::size_t begin = 0; begin < tableRows.size();) {
        std::size_t end = begin + 1;
        while (end < tableRows.size() && tableRows[end] <= tableRows[end - 1] + 1) {
            ++end;
        }
        selection.append(QItemSelectionRange(rows_->index(tableRows[begin], 0),
                                             rows_->index(tableRows[end - 1], rows_->columnCount() - 1)));
        begin = end;
    }
    const auto current = model_->selectedRow() ? rows_->tableRow(*model_->selectedRow()) : std::nullopt;
    if (current) {
        selectionModel()->setCurrentIndex(rows_->index(*current, 0), QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const auto top = keptTop_ >= 0 ? rows_->tableRow(keptTop_) : std::nullopt;
    if (top) {
        scrollTo(rows_->index(*top, 0), PositionAtTop);
    } else if (current) {
        scrollTo(rows_->index(*current, 0));
    }
}

void DependencyTable::showModelSelection() {
    const auto wanted = model_->selectedRow() ? rows_->tableRow(*model_->selectedRow()) : std::nullopt;
    if (!wanted) {
        clearSelection();
    } else if (!selectionModel()->isRowSelected(*wanted)) {
        selectRow(*wanted);
    }
}

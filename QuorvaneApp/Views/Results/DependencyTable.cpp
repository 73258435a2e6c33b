#include "QuorvaneApp/Views/Results/DependencyTable.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/DependencyTableModel.h"
#include "QuorvaneApp/Views/Controls/PaddedStyle.h"
#include "QuorvaneApp/Views/Results/DependencyDelegate.h"
#include "QuorvaneApp/Views/Results/TableHeader.h"
#include "ScanKit/Model/EnumerationTable.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QItemSelection>
#include <QMenu>
#include <QResizeEvent>
#include <QScrollBar>
#include <QStringList>

namespace {

constexpr int rowPadding = 10;

/// A longer selection is not carried over to other rows: scattered anew, each of its rows is a range of its
/// own, which takes the view far longer than a frame. The row that the details show is kept in any case.
constexpr std::size_t mostKeptRows = 1000;

/// In characters. No column asks for more than this, however long its longest text.
constexpr int mostCharacters = 64;

struct ColumnRow {
    DependencyColumn value;
    int weight;           ///< its part of a width that is left or short
    int leastCharacters;  ///< below this it says nothing
};
constexpr auto columnRows = std::to_array<ColumnRow>({
    {DependencyColumn::package, 10, 14},
    {DependencyColumn::version, 3, 7},
    {DependencyColumn::ecosystem, 3, 8},
    {DependencyColumn::license, 5, 9},
    {DependencyColumn::foundBy, 4, 9},
    {DependencyColumn::flag, 6, 10},
});
static_assert(ScanKit::hasRowForEachEnumerator(columnRows), "each enumerator needs its row here");

/// Which columns go first where not even the least of all fits: the details say what they say, and the filters
/// tell the ecosystems apart.
constexpr std::array givingWay{DependencyColumn::foundBy, DependencyColumn::ecosystem};

}  // namespace

DependencyTable::DependencyTable(AppModel& model, std::vector<QAction*> commands, QWidget* parent)
    : QTableView(parent),
      model_(&model),
      rows_(new DependencyTableModel(model, this)),
      header_(new TableHeader(this)),
      commands_(std::move(commands)),
      memory_(model.persist()),
      chosenWidths_(
          ColumnWidths::chosenFrom(memory_.remembered(WindowMemory::Part::columns), columnRows.size())) {
    setObjectName(QStringLiteral("dependencyTable"));
    setAccessibleName(QStringLiteral("Packages"));
    connect(rows_, &QAbstractItemModel::modelAboutToBeReset, this, &DependencyTable::rememberPlace);
    setHorizontalHeader(header_);
    setModel(rows_);
    setItemDelegate(new DependencyDelegate(this));
    PaddedStyle::applyTo(*this);
    arrangeHeaders();
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    connect(rows_, &QAbstractItemModel::modelReset, this, &DependencyTable::restorePlace);
    connect(model_, &AppModel::selectionChanged, this, &DependencyTable::showModelSelection);
}

void DependencyTable::arrangeHeaders() {
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    header_->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
    setSortingEnabled(true);
    // A divider that is dragged or clicked twice: what this class sets by itself is told apart.
    connect(header_, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (!isSharing_) {
            chooseWidth(column, width);
        }
    });
    connect(header_, &TableHeader::sectionChosen, this, &DependencyTable::setColumnWidth);
}

void DependencyTable::chooseWidth(int column, int width) {
    chosenWidths_[static_cast<std::size_t>(column)] = width;
    memory_.save(WindowMemory::Part::columns, ColumnWidths::toBytes(chosenWidths_));
}

void DependencyTable::fitColumns() {
    std::ranges::fill(chosenWidths_, std::nullopt);
    memory_.save(WindowMemory::Part::columns, {});
    shareWidth();
}

void DependencyTable::sortBy(DependencyColumn column) {
    const int section = static_cast<int>(column);
    const bool turns =
        header_->sortIndicatorSection() == section && header_->sortIndicatorOrder() == Qt::AscendingOrder;
    header_->setSortIndicator(section, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void DependencyTable::sortByResultOrder() {
    header_->setSortIndicator(-1, Qt::AscendingOrder);
}

void DependencyTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        shareWidth();
    }
}

void DependencyTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && !contentWidths_.empty()) {
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
        measured_.reset();
        shareWidth();
    }
}

int DependencyTable::sizeHintForColumn(int column) const {
    const auto* const delegate = static_cast<const DependencyDelegate*>(itemDelegate());
    return delegate->widthOf(font(), rows_->longestTexts(static_cast<DependencyColumn>(column)),
                             static_cast<DependencyColumn>(column));
}

/// Once for each result: tens of thousands of rows are looked through.
void DependencyTable::measureColumns() {
    if (measured_ == rows_->project() && !contentWidths_.empty()) {
        return;
    }
    measured_ = rows_->project();
    contentWidths_.clear();
    const int most = mostCharacters * fontMetrics().averageCharWidth();
    for (int column = 0; column < rows_->columnCount(); ++column) {
        const int needed = std::max(sizeHintForColumn(column), header_->sectionSizeHint(column));
        contentWidths_.push_back(std::min(needed, most));
    }
}

void DependencyTable::shareWidth() {
    measureColumns();
    std::vector<ColumnWidths::Need> needs;
    for (const ColumnRow& row : columnRows) {
        const auto column = static_cast<std::size_t>(row.value);
        needs.push_back({.content = contentWidths_[column],
                         .least = row.leastCharacters * fontMetrics().averageCharWidth(),
                         .weight = row.weight,
                         .chosen = chosenWidths_[column]});
    }
    isSharing_ = true;
    giveWay(needs);
    keepHeadings(needs);
    const std::vector<int> widths = ColumnWidths::shared(needs, viewport()->width());
    for (int column = 0; column < rows_->columnCount(); ++column) {
        if (!isColumnHidden(column)) {
            setColumnWidth(column, widths[static_cast<std::size_t>(column)]);
        }
    }
    isSharing_ = false;
}

/// Hides what must be, so that the others can be read without scrolling sideways. Whoever made a column wider than there
/// is room for scrolls, and loses none for it.
void DependencyTable::giveWay(std::vector<ColumnWidths::Need>& needs) {
    std::vector<ColumnWidths::Need> unchosen = needs;
    for (ColumnWidths::Need& need : unchosen) {
        need.chosen.reset();
    }
    for (const DependencyColumn column : givingWay) {
        const bool givesWay = ColumnWidths::least(unchosen) > viewport()->width();
        setColumnHidden(static_cast<int>(column), givesWay);
        if (givesWay) {
            const auto place = static_cast<std::size_t>(column);
            needs[place] = unchosen[place] = {.chosen = 0};
        }
    }
}

/// Where there is room for all headings, none of them is cut, however much the texts of another column need.
void DependencyTable::keepHeadings(std::vector<ColumnWidths::Need>& needs) {
    std::vector<ColumnWidths::Need> whole = needs;
    for (std::size_t column = 0; column < whole.size(); ++column) {
        whole[column].least = std::max(whole[column].least, header_->headingWidth(static_cast<int>(column)));
    }
    if (ColumnWidths::least(whole) <= viewport()->width()) {
        needs = whole;
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

int DependencyTable::selectedCount() const {
    int count = 0;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        count += range.height();
    }
    return count;
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

/// Where nothing is selected, the first step of the keys selects where they are, and does not pass it by.
void DependencyTable::keyPressEvent(QKeyEvent* event) {
    const bool steps = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (steps && !selectionModel()->hasSelection() && rows_->rowCount() > 0) {
        selectOnly(currentIndex().isValid() ? currentIndex().row() : 0);
        return;
    }
    QTableView::keyPressEvent(event);
}

/// Whatever keys are held down, which Qt's own way to select a row would ask.
void DependencyTable::selectOnly(int tableRow) {
    selectionModel()->setCurrentIndex(rows_->index(tableRow, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void DependencyTable::contextMenuEvent(QContextMenuEvent* event) {
    if (!selectionModel()->hasSelection()) {
        return;
    }
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("rowMenu"));
    QAction* const copyRows = menu.addAction(QStringLiteral("&Copy"), this, &DependencyTable::copy);
    copyRows->setObjectName(QStringLiteral("copyRows"));
    menu.addSeparator();
    for (QAction* const command : commands_) {
        menu.addAction(command);
    }
    // The menu key opens it beside the row, wherever the mouse is.
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    menu.exec(isByKey ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                      : event->globalPos());
}

void DependencyTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    Q_EMIT selectedCountChanged();
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
    kept_ = {.project = rows_->project()};
    const std::vector<int> selected = selectedRows();
    if (selected.size() <= mostKeptRows) {
        for (const int row : selected) {
            kept_.selected.push_back(rows_->resultRow(row));
        }
    }
    const int top = rowAt(0);
    if (top >= 0 && verticalScrollBar()->value() > 0) {
        kept_.top = rows_->resultRow(top);
        kept_.topId = kept_.project->dependencies()[static_cast<std::size_t>(*kept_.top)].id();
        kept_.topOffset = -rowViewportPosition(top);
    }
    isRestoring_ = true;
}

/// Of another result's rows only what the application's model found again stays selected.
void DependencyTable::restorePlace() {
    if (kept_.project != rows_->project()) {
        kept_.selected.clear();
        kept_.top = kept_.topId && rows_->project() ? rows_->project()->rowOf(*kept_.topId) : std::nullopt;
        shareWidth();
    }
    if (model_->selectedRow()) {
        kept_.selected.push_back(*model_->selectedRow());
    }
    std::vector<int> tableRows;
    for (const int row : kept_.selected) {
        if (const auto tableRow = rows_->tableRow(row)) {
            tableRows.push_back(*tableRow);
        }
    }
    std::ranges::sort(tableRows);
    select(tableRows);
    scrollBack();
    kept_ = {};
    isRestoring_ = false;
    Q_EMIT selectedCountChanged();
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
}

void DependencyTable::scrollBack() {
    const auto top = kept_.top ? rows_->tableRow(*kept_.top) : std::nullopt;
    const auto current = model_->selectedRow() ? rows_->tableRow(*model_->selectedRow()) : std::nullopt;
    if (top) {
        scrollTo(rows_->index(*top, 0), PositionAtTop);
        verticalScrollBar()->setValue(verticalScrollBar()->value() + kept_.topOffset);
    } else if (current) {
        scrollTo(rows_->index(*current, 0));
    }
}

void DependencyTable::showModelSelection() {
    const auto wanted = model_->selectedRow() ? rows_->tableRow(*model_->selectedRow()) : std::nullopt;
    if (!wanted) {
        clearSelection();
    } else if (!selectionModel()->isRowSelected(*wanted)) {
        selectOnly(*wanted);
    }
}

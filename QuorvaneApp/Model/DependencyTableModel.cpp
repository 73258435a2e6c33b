#include "QuorvaneApp/Model/DependencyTableModel.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "ScanKit/Model/EnumerationTable.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_set>

namespace {

using ScanKit::Dependency;

struct ColumnRow {
    DependencyColumn value;
    const char* title;
};
constexpr auto columnRows = std::to_array<ColumnRow>({
    {DependencyColumn::package, "Package"},
    {DependencyColumn::version, "Version"},
    {DependencyColumn::ecosystem, "Ecosystem"},
    {DependencyColumn::license, "License"},
    {DependencyColumn::foundBy, "Found by"},
    {DependencyColumn::flag, "Flag"},
});
static_assert(ScanKit::hasRowForEachEnumerator(columnRows), "each enumerator needs its row here");

QString cellText(const Dependency& dependency, DependencyColumn column) {
    switch (column) {
        case DependencyColumn::package:
            return Texts::oneLine(Texts::fromUtf8(dependency.name));
        case DependencyColumn::version:
            return Texts::oneLine(Texts::fromUtf8(dependency.version));
        case DependencyColumn::ecosystem:
            return Texts::fromUtf8(ScanKit::label(dependency.ecosystem));
        case DependencyColumn::license:
            return Texts::oneLine(Texts::fromUtf8(dependency.licenseDisplay()));
        case DependencyColumn::foundBy:
            return Texts::fromUtf8(ScanKit::shortLabel(dependency.basis));
        case DependencyColumn::flag:
            return dependency.flags.empty() ? QString()
                                            : Texts::fromUtf8(ScanKit::label(dependency.flags.front()));
    }
    return {};
}

/// What the cell's text is made of, without making one: there are tens of thousands.
std::string_view sourceOf(const Dependency& dependency, DependencyColumn column) {
    switch (column) {
        case DependencyColumn::package:
            return dependency.name;
        case DependencyColumn::version:
            return dependency.version;
        case DependencyColumn::ecosystem:
            return ScanKit::label(dependency.ecosystem);
        case DependencyColumn::license:
            if (dependency.license) {
                return *dependency.license;
            }
            return dependency.declared ? std::string_view(*dependency.declared) : std::string_view();
        case DependencyColumn::foundBy:
            return ScanKit::shortLabel(dependency.basis);
        case DependencyColumn::flag:
            return dependency.flags.empty() ? std::string_view() : ScanKit::label(dependency.flags.front());
    }
    return {};
}

/// All of them: the cell has room for the first.
QString flagList(const Dependency& dependency) {
    return Texts::fromUtf8(dependency.flagLabels(", "));
}

/// The cell in words, with what it shows by other means.
QString fullText(const Dependency& dependency, DependencyColumn column) {
    if (column == DependencyColumn::flag) {
        return flagList(dependency);
    }
    return column == DependencyColumn::package && dependency.isDev
               ? QStringLiteral("%1, dev-only").arg(cellText(dependency, column))
               : cellText(dependency, column);
}

}  // namespace

DependencyTableModel::DependencyTableModel(AppModel& model, QObject* parent)
    : QAbstractTableModel(parent), model_(&model) {
    connect(model_, &AppModel::rowsChanged, this, &DependencyTableModel::reset);
    reset();
}

int DependencyTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DependencyTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columnRows.size());
}

QVariant DependencyTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Dependency& dependency = project_->dependencies()[static_cast<std::size_t>(resultRow(index.row()))];
    const auto column = static_cast<DependencyColumn>(index.column());
    switch (role) {
        case Qt::DisplayRole:
            return cellText(dependency, column);
        case Qt::ToolTipRole:
            return Texts::toolTip(fullText(dependency, column));
        case Qt::AccessibleTextRole:
            // The cell draws a shape and a number, which say nothing to a screen reader.
            return column == DependencyColumn::flag && dependency.flags.empty()
                       ? QStringLiteral("no flag")
                       : fullText(dependency, column);
        case flagRole:
            return dependency.flags.empty() ? QVariant()
                                            : static_cast<int>(dependency.flags.front().position());
        case furtherFlagsRole:
            return dependency.flags.empty() ? 0 : static_cast<int>(dependency.flags.size()) - 1;
        case isDevRole:
            return dependency.isDev;
        default:
            return {};
    }
}

QVariant DependencyTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount()) {
        return {};
    }
    return QString::fromUtf8(columnRows[static_cast<std::size_t>(section)].title);
}

void DependencyTableModel::sort(int column, Qt::SortOrder order) {
    if (column < 0) {
        sorting_.reset();
    } else {
        sorting_ = Sorting{static_cast<DependencyColumn>(column), order == Qt::DescendingOrder};
    }
    allSorted_.clear();  // made anew by whoever shows rows next
    reset();
}

std::optional<int> DependencyTableModel::tableRow(int resultRow) const {
    const auto position = static_cast<std::size_t>(resultRow);
    if (resultRow < 0 || position >= tableRows_.size() || tableRows_[position] < 0) {
        return std::nullopt;
    }
    return tableRows_[position];
}

QStringList DependencyTableModel::longestTexts(DependencyColumn column) const {
    constexpr std::size_t most = 12;
    if (!project_) {
        return {};
    }
    std::unordered_set<std::string_view> seen;
    std::vector<const Dependency*> longest;  ///< by their sources' lengths
    const auto isLonger = [column](const Dependency* a, const Dependency* b) {
        return sourceOf(*a, column).size() > sourceOf(*b, column).size();
    };
    for (const Dependency& dependency : project_->dependencies()) {
        const bool belongs = longest.size() < most || isLonger(&dependency, longest.back());
        if (belongs && seen.insert(sourceOf(dependency, column)).second) {
            longest.insert(std::ranges::upper_bound(longest, &dependency, isLonger), &dependency);
            longest.resize(std::min(longest.size(), most));
        }
    }
    QStringList texts;
    for (const Dependency* const dependency : longest) {
        texts.push_back(cellText(*dependency, column));
    }
    return texts;
}

QString DependencyTableModel::rowText(int tableRow) const {
    const Dependency& dependency = project_->dependencies()[static_cast<std::size_t>(resultRow(tableRow))];
    QStringList cells;
    for (const ColumnRow& column : columnRows) {
        cells.push_back(column.value == DependencyColumn::flag ? flagList(dependency)
                                                               : cellText(dependency, column.value));
    }
    return cells.join(QLatin1Char('\t'));
}

void DependencyTableModel::reset() {
    beginResetModel();
    if (project_ != model_->project()) {
        project_ = model_->project();
        allSorted_.clear();
    }
    rows_ = model_->rows();
    // Marked first, since `showSorted` asks which rows are shown; where they stand is known after it.
    tableRows_.assign(project_ ? project_->dependencies().size() : 0, -1);
    for (const int row : rows_) {
        tableRows_[static_cast<std::size_t>(row)] = 0;
    }
    if (sorting_ && project_) {
        showSorted();
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        tableRows_[static_cast<std::size_t>(rows_[i])] = static_cast<int>(i);
    }
    endResetModel();
}

/// Everything is sorted once, and then only looked through, so that typing in the search costs no sorting.
void DependencyTableModel::showSorted() {
    if (allSorted_.empty()) {
        allSorted_ = sortedRows(*project_, sorting_->column, sorting_->isDescending);
    }
    rows_.clear();
    for (const int row : allSorted_) {
        if (tableRows_[static_cast<std::size_t>(row)] >= 0) {
            rows_.push_back(row);
        }
    }
}

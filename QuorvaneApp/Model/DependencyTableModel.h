#pragma once

#include "QuorvaneApp/Model/DependencyOrder.h"

#include <memory>
#include <optional>
#include <vector>

#include <QAbstractTableModel>
#include <QStringList>

class AppModel;

/// The rows of the application's model as a table. A change of the rows resets it: at tens of thousands of
/// rows that is far faster than inserting and removing those that came and went; the view restores what was
/// selected.
class DependencyTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role {
        flagRole = Qt::UserRole,  ///< the position of the most serious flag in `allFlags`; absent without one
        furtherFlagsRole,         ///< how many more flags there are
        isDevRole,                ///< only needed for development
    };

    explicit DependencyTableModel(AppModel& model, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// A negative column means the result's own order.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    /// What the rows are positions in; null while nothing is shown.
    const std::shared_ptr<const ScannedProject>& project() const { return project_; }
    /// The row of the result that the table row shows.
    int resultRow(int tableRow) const { return rows_[static_cast<std::size_t>(tableRow)]; }
    /// The table row that shows this row of the result, or none when it is filtered out.
    std::optional<int> tableRow(int resultRow) const;
    /// The column's longest texts in the whole result, filtered out or not, by their number of characters: one
    /// of them is, or is nearly, the widest.
    QStringList longestTexts(DependencyColumn column) const;
    /// The row's cells with all of its flags and with tabs between them, as one line for the clipboard.
    QString rowText(int tableRow) const;

private:
    struct Sorting {
        DependencyColumn column;
        bool isDescending;
    };
    void reset();
    void showSorted();

    AppModel* model_;
    std::shared_ptr<const ScannedProject> project_;  ///< what the rows are positions in
    std::optional<Sorting> sorting_;
    std::vector<int> allSorted_;  ///< every row of the result, sorted; empty in the result's own order
    std::vector<int> rows_;       ///< the rows shown, as positions in the result
    std::vector<int> tableRows_;  ///< for each row of the result, its table row or -1
};

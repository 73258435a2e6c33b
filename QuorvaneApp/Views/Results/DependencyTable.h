#pragma once

#include "QuorvaneApp/Model/DependencyOrder.h"
#include "QuorvaneApp/Model/WindowMemory.h"
#include "QuorvaneApp/Views/Results/ColumnWidths.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QTableView>

class AppModel;
class DependencyTableModel;
class QAction;
class ScannedProject;
class TableHeader;

/// The packages in rows. Keeps the current row, the selected rows and the place scrolled to when searching,
/// filtering, sorting or another scan brings other rows. Its columns fit their content and share the width that
/// there is; those that the user made wider or narrower stay so. Where there is no room
/// for all, how a license was found and the ecosystem are not shown.
class DependencyTable : public QTableView {
    Q_OBJECT

public:
    /// The context menu offers `commands` beside copying.
    DependencyTable(AppModel& model, std::vector<QAction*> commands, QWidget* parent = nullptr);

    /// The selected rows as lines of text with tabs between the cells, in the order shown.
    QString selectedText() const;
    int selectedCount() const;
    void selectOnly(int tableRow);
    /// Sorts by the column, and when it is sorted by it already, the other way round.
    void sortBy(DependencyColumn column);
    /// Back to the result's own order.
    void sortByResultOrder();
    /// Forgets the widths that the user chose.
    void fitColumns();

public Q_SLOTS:
    void copy();

Q_SIGNALS:
    void selectedCountChanged();

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    int sizeHintForColumn(int column) const override;

private:
    /// What stood where before the rows changed. Rows mean the same as long as the project is the same; for
    /// another scan's the package at the top is found by its id.
    struct Place {
        std::shared_ptr<const ScannedProject> project;
        std::vector<int> selected;         ///< rows of the result
        std::optional<int> top;            ///< the row of the result at the top, when scrolled down
        std::optional<std::string> topId;  ///< its package
        int topOffset = 0;                 ///< how many pixels of it are scrolled away
    };

    void arrangeHeaders();
    void measureColumns();
    void shareWidth();
    void giveWay(std::vector<ColumnWidths::Need>& needs);
    void keepHeadings(std::vector<ColumnWidths::Need>& needs);
    void chooseWidth(int column, int width);
    void rememberPlace();
    void restorePlace();
    void scrollBack();
    void showModelSelection();
    void select(const std::vector<int>& tableRows);
    std::vector<int> selectedRows() const;

    AppModel* model_;
    DependencyTableModel* rows_;
    TableHeader* header_;
    std::vector<QAction*> commands_;
    WindowMemory memory_;
    std::shared_ptr<const ScannedProject> measured_;  ///< whose texts the contents' widths are of
    std::vector<int> contentWidths_;
    std::vector<std::optional<int>> chosenWidths_;
    bool isSharing_ = false;
    Place kept_;
    bool isRestoring_ = false;
};

#pragma once

#include <memory>
#include <vector>

#include <QTableView>

class AppModel;
class DependencyTableModel;
class ScannedProject;

/// The packages in rows. Keeps the current row, the selected rows and the place scrolled to when searching,
/// filtering or sorting brings other rows.
class DependencyTable : public QTableView {
    Q_OBJECT

public:
    explicit DependencyTable(AppModel& model, QWidget* parent = nullptr);

    /// The selected rows as lines of text with tabs between the cells, in the order shown.
    QString selectedText() const;
    /// Back to the result's own order.
    void sortByResultOrder();

public Q_SLOTS:
    void copy();

protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrangeColumns();
    void shareWidth();
    void rememberPlace();
    void restorePlace();
    void showModelSelection();
    void select(const std::vector<int>& tableRows);
    std::vector<int> selectedRows() const;

    AppModel* model_;
    DependencyTableModel* rows_;
    std::shared_ptr<const ScannedProject> keptProject_;
    std::vector<int> keptRows_;  ///< what was selected before a reset, as rows of the result
    int keptTop_ = -1;           ///< the row of the result that stood at the top
    bool isRestoring_ = false;
};

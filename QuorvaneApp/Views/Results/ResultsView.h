#pragma once

#include "QuorvaneApp/Model/WindowMemory.h"

#include <functional>

#include <QWidget>

class AppCommands;
class AppModel;
class CommandButton;
class DependencyTable;
class DetailPane;
class MessagePage;
class QPushButton;
class QSplitter;
class QStackedWidget;
class Sidebar;

/// Sidebar, table and details side by side; where the window is narrow the details lie below the table. In
/// the table's place stands what is going on when there are no rows.
class ResultsView : public QWidget {
    Q_OBJECT

public:
    ResultsView(AppModel& model, const AppCommands& commands, std::function<void(const QString&)> openLink,
                QWidget* parent = nullptr);

    DependencyTable& table() { return *table_; }
    Sidebar& sidebar() { return *sidebar_; }
    DetailPane& detailPane() { return *detailPane_; }
    /// Puts the keys into the table, on the selected row or the first.
    void goToRows();
    /// Takes the keys until there are rows, and passes them on to these.
    void awaitRows();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showState();
    void explainHidden();
    void arrange();
    void rememberSizes();
    void explain(const QString& heading, const QString& sentence, QWidget* button);

    AppModel* model_;
    Sidebar* sidebar_;
    DependencyTable* table_;
    DetailPane* detailPane_;
    MessagePage* message_;
    QPushButton* showAll_;
    CommandButton* rescan_;
    CommandButton* openFolder_;
    QStackedWidget* middle_;
    QSplitter* outer_;
    QSplitter* inner_;
    WindowMemory memory_;
    bool isArranged_ = false;
};

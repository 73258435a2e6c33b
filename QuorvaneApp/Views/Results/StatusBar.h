#pragma once

#include <QWidget>

class AppCommands;
class AppModel;
class CommandButton;
class QBoxLayout;
class QStackedWidget;
class RowCount;
class SummaryStrip;

/// The lower edge of the window: how many rows are shown and what the reports hold, and in their place, while a
/// scan runs, how far it is. It takes the same height for both, so that the table stays where it is.
class StatusBar : public QWidget {
    Q_OBJECT

public:
    StatusBar(AppModel& model, const AppCommands& commands, QWidget* parent = nullptr);

    RowCount& rowCount() { return *rowCount_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showState();
    void arrange();

    AppModel* model_;
    RowCount* rowCount_;
    CommandButton* warnings_;
    SummaryStrip* summary_;
    QWidget* figures_;
    QBoxLayout* layout_;  ///< beside each other, or below where the window is narrow
    QStackedWidget* pages_;
    QWidget* progress_;
};

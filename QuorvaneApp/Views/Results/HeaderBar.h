#pragma once

#include <QWidget>

class AppCommands;
class AppModel;
class ElidedLabel;
class Field;

/// The project's name and folder, the search field, and the two commands used most.
class HeaderBar : public QWidget {
    Q_OBJECT

public:
    HeaderBar(AppModel& model, const AppCommands& commands, QWidget* parent = nullptr);

    /// Puts the cursor into the search field, with its text selected.
    void startSearch();

Q_SIGNALS:
    /// The user is done typing and wants to go on to the rows.
    void searchLeft();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showProject();

    AppModel* model_;
    ElidedLabel* name_;
    ElidedLabel* path_;
    Field* search_;
};

#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QWidget>

class QAction;
class QMenu;

/// Undo, Redo, Cut, Copy, Paste and Select All, each sent to the widget that has the focus when that widget
/// has an operation of this name. One set serves every window.
class EditActions : public QObject {
    Q_OBJECT

public:
    explicit EditActions(QObject* parent);

    /// Adds them, in the usual order and groups, and keeps them enabled as the focus allows.
    void addTo(QMenu& menu);
    QAction* action(const char* operation) const;

private:
    void refresh();
    void remember(QWidget* focused);
    void run(const char* operation) const;
    bool isAvailable(const char* operation) const;

    std::vector<QAction*> actions_;
    QPointer<QWidget> focused_;
};

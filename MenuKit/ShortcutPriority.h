#pragma once

#include <vector>

#include <QObject>

class QAction;
class QWidget;

/// Gives the shortcuts of these actions to them, whatever control has the focus: text fields know many keys of
/// their own, Ctrl+E for the end of the line, and take them before any menu is asked. Belongs to the window.
class ShortcutPriority : public QObject {
    Q_OBJECT

public:
    ShortcutPriority(QWidget& window, std::vector<QAction*> actions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<QAction*> actions_;
};

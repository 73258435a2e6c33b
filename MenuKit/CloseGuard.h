#pragma once

#include <functional>

#include <QObject>

class QWidget;

/// Asks before a window closes, whichever way the wish came: menu, shortcut, title bar or quitting. Belongs
/// to the window and ends with it.
class CloseGuard : public QObject {
    Q_OBJECT

public:
    using Question = std::function<bool()>;

    /// The window stays open whenever `mayClose` says false.
    CloseGuard(QWidget& window, Question mayClose);

    bool shouldClose() const { return mayClose_(); }
    /// The guard of the program's main window: the first one made that still lives. Null when there is none.
    static CloseGuard* main();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Question mayClose_;
};

#include "MenuKit/ShortcutPriority.h"

#include "MenuKit/WindowReader.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

ShortcutPriority::ShortcutPriority(QWidget& window, std::vector<QAction*> actions)
    : QObject(&window), actions_(std::move(actions)) {
    qApp->installEventFilter(this);
}

/// A control that wants a key for itself accepts this question; here it never hears it.
bool ShortcutPriority::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride) {
        return QObject::eventFilter(watched, event);
    }
    const QKeySequence keys(static_cast<QKeyEvent*>(event)->keyCombination());
    const bool isOurs = WindowReader::windowOf(qobject_cast<QWidget*>(watched)) == parent();
    const bool isShortcut = std::ranges::any_of(actions_, [&](const QAction* action) {
        return action->isEnabled() && action->shortcuts().contains(keys);
    });
    if (!isOurs || !isShortcut) {
        return QObject::eventFilter(watched, event);
    }
    event->ignore();
    return true;
}

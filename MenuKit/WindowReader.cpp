#include "MenuKit/WindowReader.h"

#include <QApplication>
#include <QWidget>

namespace WindowReader {
namespace {

bool isWorkedIn(const QWidget& window) {
    const Qt::WindowType type = window.windowType();
    return window.isVisible() && (type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet);
}

}  // namespace

QWidget* windowOf(const QWidget* widget) {
    return widget == nullptr ? nullptr : widget->window();
}

QWidget* frontWindow() {
    QWidget* const active = QApplication::activeWindow();
    if (active != nullptr && isWorkedIn(*active)) {
        return active;
    }
    // No window is active while a menu of the desktop is open.
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (isWorkedIn(*window)) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace WindowReader

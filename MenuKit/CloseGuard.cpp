#include "MenuKit/CloseGuard.h"

#include <utility>

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace {

QPointer<CloseGuard>& mainGuard() {
    static QPointer<CloseGuard> guard;
    return guard;
}

}  // namespace

CloseGuard::CloseGuard(QWidget& window, Question mayClose)
    : QObject(&window), mayClose_(std::move(mayClose)) {
    window.installEventFilter(this);
    if (mainGuard().isNull()) {
        mainGuard() = this;
    }
}

CloseGuard* CloseGuard::main() {
    return mainGuard();
}

bool CloseGuard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Close && !shouldClose()) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

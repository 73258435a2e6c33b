#include "QuorvaneApp/Views/Dialogs/DialogUpdatePresenter.h"

#include "QuorvaneApp/Views/Dialogs/AlertWindow.h"

#include <utility>

#include <QApplication>

namespace {

bool hasWindows() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

void showInFront(QDialog& dialog) {
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

}  // namespace

void DialogUpdatePresenter::show(const UpdateAlert& alert) {
    if (!hasWindows()) {
        return;
    }
    auto* const box = new AlertWindow(alert.title, alert.text, window_);
    box->setObjectName(QStringLiteral("updateAlert"));
    box->setWindowModality(Qt::ApplicationModal);
    showInFront(*box);
}

void DialogUpdatePresenter::offer(const AvailableUpdate& update, Answer chosen) {
    if (!hasWindows()) {
        return;
    }
    if (!offered_.isNull()) {
        offered_->close();
    }
    offered_ = new UpdateWindow(update, window_);
    QObject::connect(offered_, &UpdateWindow::chosen, offered_, std::move(chosen));
    showInFront(*offered_);
}

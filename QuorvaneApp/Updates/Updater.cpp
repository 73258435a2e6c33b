#include "QuorvaneApp/Updates/Updater.h"

#include "QuorvaneApp/Updates/ProbeOutcome.h"
#include "QuorvaneApp/Updates/UpdatePresenter.h"
#include "QuorvaneApp/Updates/UpdaterController.h"

#include <QGuiApplication>

Updater::Updater(UpdaterController& controller, UpdatePresenter& presenter,
                 std::chrono::milliseconds timeLimit, QObject* parent)
    : QObject(parent), controller_(&controller), presenter_(&presenter), timeLimit_(timeLimit) {}

void Updater::checkForUpdates() {
    if (checking_) {
        return;
    }
    const std::optional<QUrl> feed = controller_->feedURL();
    if (!feed) {
        presenter_->show(UpdateAlert::failed(QGuiApplication::applicationDisplayName()));
        return;
    }
    setChecking(true);
    // The head is enough: whether the feed holds news is for the framework to read.
    client_.send(FeedClient::Method::head, *feed, timeLimit_,
                 [this](const FeedClient::Answer& answer) { act(answer); });
}

void Updater::setChecking(bool checking) {
    checking_ = checking;
    Q_EMIT checkingChanged();
}

void Updater::act(const FeedClient::Answer& answer) {
    setChecking(false);
    const QString name = QGuiApplication::applicationDisplayName();
    switch (classify(answer.status)) {
        case ProbeOutcome::reachable:
            controller_->checkForUpdates();
            return;
        case ProbeOutcome::upToDate:
            presenter_->show(UpdateAlert::upToDate(name, QCoreApplication::applicationVersion()));
            return;
        case ProbeOutcome::failed:
            presenter_->show(UpdateAlert::failed(name));
            return;
    }
}

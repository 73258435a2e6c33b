#pragma once

#include "QuorvaneApp/Updates/FeedClient.h"

#include <chrono>

#include <QObject>

class UpdatePresenter;
class UpdaterController;

/// The "Check for Updates…" command. Before it hands over to the update framework it looks with a cheap
/// request whether the feed can be reached, so that a missing network or a feed that is not published yet
/// gets a plain answer.
class Updater : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::seconds probeTimeLimit{15};

    /// Both must outlive this object.
    Updater(UpdaterController& controller, UpdatePresenter& presenter,
            std::chrono::milliseconds timeLimit = probeTimeLimit, QObject* parent = nullptr);

    UpdaterController& controller() const { return *controller_; }
    /// True while a probe is on its way; a second wish is ignored until then.
    bool checking() const { return checking_; }

    void checkForUpdates();

Q_SIGNALS:
    void checkingChanged();

private:
    void setChecking(bool checking);
    void act(const FeedClient::Answer& answer);

    UpdaterController* controller_;
    UpdatePresenter* presenter_;
    std::chrono::milliseconds timeLimit_;
    FeedClient client_;
    bool checking_ = false;
};

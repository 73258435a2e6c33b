#pragma once

#include "QuorvaneApp/Updates/FeedClient.h"
#include "QuorvaneApp/Updates/UpdateSearch.h"
#include "QuorvaneApp/Updates/UpdaterController.h"

#include <chrono>
#include <functional>
#include <optional>

#include <QDateTime>
#include <QObject>
#include <QTimer>

class UpdatePresenter;

/// The update check for systems whose own package manager installs programs. It reads the feed that the update
/// framework reads on macOS and tells what is new; it downloads no program and runs none.
class FeedUpdaterController : public QObject, public UpdaterController {
    Q_OBJECT

public:
    static constexpr std::chrono::hours betweenAutomaticChecks{24};

    struct Setup {
        std::optional<QUrl> feed;  ///< without one there is no check of any kind
        UpdateTarget target = UpdateTarget::current();
        UpdatePresenter& presenter;
        std::function<void(const QUrl&)> openPage;  ///< in the user's browser
        std::function<QDateTime()> now = QDateTime::currentDateTimeUtc;
        std::chrono::milliseconds timeLimit = std::chrono::seconds(30);  ///< for the whole feed
    };

    /// The presenter must outlive this object.
    explicit FeedUpdaterController(Setup setup, QObject* parent = nullptr);

    /// Begins with the automatic checks; needs a running event loop.
    void start();
    /// True while the feed is on its way.
    bool isChecking() const { return running_.has_value(); }

    std::optional<QUrl> feedURL() const override { return setup_.feed; }
    /// Shows a version that was skipped too. Joins a check that is already on its way.
    void checkForUpdates() override;
    bool automaticallyChecksForUpdates() const override;
    void setAutomaticallyChecksForUpdates(bool isOn) override;

private:
    enum class Kind { automatic, onWish };

    void checkWhenDue();
    bool isDue() const;
    void check(Kind kind);
    void finish(const FeedClient::Answer& answer, Kind kind);
    void offer(const AvailableUpdate& update);

    Setup setup_;
    FeedClient client_;
    QTimer timer_;
    std::optional<QDateTime> lastCheck_;
    std::optional<Kind> running_;
};

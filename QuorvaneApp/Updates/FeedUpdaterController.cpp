#include "QuorvaneApp/Updates/FeedUpdaterController.h"

#include "QuorvaneApp/Updates/ProbeOutcome.h"
#include "QuorvaneApp/Updates/UpdateFeed.h"
#include "QuorvaneApp/Updates/UpdateMemory.h"
#include "QuorvaneApp/Updates/UpdatePresenter.h"
#include "QuorvaneApp/Updates/VersionOrder.h"

#include <algorithm>
#include <utility>

#include <QGuiApplication>

namespace {

/// The clock is looked at this often, since a timer stands still while the computer sleeps.
constexpr std::chrono::hours betweenLooks{1};

/// What a whole check found.
struct Finding {
    bool isKnown = false;  ///< false after a failed check
    std::optional<AvailableUpdate> update;
};

Finding findingOf(const FeedClient::Answer& answer, const UpdateTarget& target) {
    switch (classify(answer.status)) {
        case ProbeOutcome::upToDate:
            return {.isKnown = true};
        case ProbeOutcome::failed:
            return {};
        case ProbeOutcome::reachable:
            break;
    }
    const auto items = readUpdateFeed(answer.body);
    return items ? Finding{.isKnown = true, .update = findUpdate(*items, target)} : Finding{};
}

bool isSkipped(const AvailableUpdate& update) {
    const std::optional<QString> skipped = UpdateMemory::skippedVersion();
    return skipped && compareVersions(*skipped, update.version) == 0;
}

}  // namespace

FeedUpdaterController::FeedUpdaterController(Setup setup, QObject* parent)
    : QObject(parent), setup_(std::move(setup)) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &FeedUpdaterController::checkWhenDue);
}

void FeedUpdaterController::start() {
    timer_.start(0);
}

void FeedUpdaterController::checkForUpdates() {
    check(Kind::onWish);
}

bool FeedUpdaterController::automaticallyChecksForUpdates() const {
    return UpdateMemory::checksAutomatically();
}

void FeedUpdaterController::setAutomaticallyChecksForUpdates(bool isOn) {
    UpdateMemory::saveChecksAutomatically(isOn);
    start();
}

void FeedUpdaterController::checkWhenDue() {
    if (!setup_.feed || !automaticallyChecksForUpdates()) {
        return;
    }
    if (isDue()) {
        check(Kind::automatic);
    }
    timer_.start(betweenLooks);
}

/// A last check that lies in the future comes from a clock that was set back: it counts for nothing. The check of
/// this launch counts even where it could not be written down.
bool FeedUpdaterController::isDue() const {
    const QDateTime now = setup_.now();
    const std::optional<QDateTime> last = std::max(UpdateMemory::lastCheck(), lastCheck_);
    return !last || *last > now ||
           last->msecsTo(now) >= std::chrono::milliseconds(betweenAutomaticChecks).count();
}

void FeedUpdaterController::check(Kind kind) {
    const bool isRunning = running_.has_value();
    if (!isRunning || kind == Kind::onWish) {
        running_ = kind;
    }
    if (isRunning || !setup_.feed) {
        return;
    }
    lastCheck_ = setup_.now();
    UpdateMemory::saveLastCheck(*lastCheck_);
    client_.send(FeedClient::Method::get, *setup_.feed, setup_.timeLimit,
                 [this](const FeedClient::Answer& answer) {
                     finish(answer, std::exchange(running_, std::nullopt).value_or(Kind::automatic));
                 });
}

void FeedUpdaterController::finish(const FeedClient::Answer& answer, Kind kind) {
    const Finding finding = findingOf(answer, setup_.target);
    const bool isWished = kind == Kind::onWish;
    if (finding.update && (isWished || !isSkipped(*finding.update))) {
        offer(*finding.update);
        return;
    }
    if (!isWished) {
        return;
    }
    const QString name = QGuiApplication::applicationDisplayName();
    setup_.presenter.show(finding.isKnown ? UpdateAlert::upToDate(name, setup_.target.version)
                                          : UpdateAlert::failed(name));
}

void FeedUpdaterController::offer(const AvailableUpdate& update) {
    setup_.presenter.offer(update, [this, update](UpdateChoice choice) {
        switch (choice) {
            case UpdateChoice::skipVersion:
                UpdateMemory::saveSkippedVersion(update.version);
                return;
            case UpdateChoice::remindLater:
                return;
            case UpdateChoice::openPage:
                if (update.page) {
                    setup_.openPage(*update.page);
                }
                return;
        }
    });
}

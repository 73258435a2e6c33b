#pragma once

#include "QuorvaneApp/Updates/UpdatePresenter.h"
#include "QuorvaneApp/Updates/UpdaterController.h"

#include <optional>
#include <utility>
#include <vector>

/// Stands in for the update framework: remembers how often it was asked to check.
class FakeUpdaterController : public UpdaterController {
public:
    explicit FakeUpdaterController(std::optional<QUrl> feed = {}) : feed_(std::move(feed)) {}

    std::optional<QUrl> feedURL() const override { return feed_; }
    void checkForUpdates() override { ++checks; }
    bool automaticallyChecksForUpdates() const override { return isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn) override { isAutomatic = isOn; }

    int checks = 0;
    bool isAutomatic = true;

private:
    std::optional<QUrl> feed_;
};

/// Remembers what was to be shown; the test makes the user's choice with the answer of an offer.
class RecordingPresenter : public UpdatePresenter {
public:
    void show(const UpdateAlert& alert) override { alerts.push_back(alert); }
    void offer(const AvailableUpdate& update, Answer chosen) override {
        offers.push_back(update);
        choose = std::move(chosen);
    }

    std::vector<UpdateAlert> alerts;
    std::vector<AvailableUpdate> offers;
    Answer choose;
};

#pragma once

#include "QuorvaneApp/Updates/UpdatePresenter.h"
#include "QuorvaneApp/Updates/UpdaterController.h"
#include "Tests/QuorvaneApp/Words.h"

#include <optional>
#include <utility>
#include <vector>

#include <QDebug>

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

/// A feed of these items; the framework's elements have the prefix "s".
inline QByteArray feedOf(const QByteArray& items) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
           "<channel><title>Quorvane</title><link>https://example.com/</link>" +
           items + "</channel></rss>\n";
}
/// An item for Linux.
inline QByteArray itemOf(const QByteArray& version, const QByteArray& more = {}) {
    return "<item><s:version>" + version + "</s:version>" + more + "<enclosure s:os=\"linux\"/></item>";
}

// What a comparison that fails shows of the values.
inline QDebug operator<<(QDebug debug, const AvailableUpdate& update) {
    return debug << update.version << update.shownVersion << update.releaseNotes
                 << update.page.value_or(QUrl());
}

#pragma once

#include <optional>

#include <QUrl>

/// What the program asks of an update framework: where its feed is, to check now, and whether it checks by
/// itself. The framework shows its own windows.
class UpdaterController {
public:
    virtual ~UpdaterController() = default;

    /// Where updates are published; absent when the program was built without a feed.
    virtual std::optional<QUrl> feedURL() const = 0;
    /// The framework's own check on the user's wish. Returns at once; whatever comes of it is shown.
    virtual void checkForUpdates() = 0;
    /// Whether it also checks about once a day, quietly unless there is news.
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool isOn) = 0;
};

// For macOS builds with an update feed: the Linux build does not compile this file.
#include "QuorvaneApp/Platform/UpdaterControllers.h"

#import <Sparkle/Sparkle.h>

namespace {

class SparkleUpdaterController : public UpdaterController {
public:
    SparkleUpdaterController()
        : controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                    updaterDelegate:nil
                                                                 userDriverDelegate:nil]) {}

    std::optional<QUrl> feedURL() const override {
        NSURL* const feed = controller_.updater.feedURL;
        return feed == nil ? std::nullopt : std::optional(QUrl::fromNSURL(feed));
    }

    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

    bool automaticallyChecksForUpdates() const override {
        return controller_.updater.automaticallyChecksForUpdates;
    }

    void setAutomaticallyChecksForUpdates(bool isOn) override {
        controller_.updater.automaticallyChecksForUpdates = isOn;
    }

private:
    SPUStandardUpdaterController* controller_;  ///< held by automatic reference counting
};

}  // namespace

std::unique_ptr<UpdaterController> makeUpdaterController(const std::optional<QUrl>&, UpdatePresenter&,
                                                         std::function<void(const QUrl&)>) {
    return std::make_unique<SparkleUpdaterController>();
}

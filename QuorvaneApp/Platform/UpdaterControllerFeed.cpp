#include "QuorvaneApp/Platform/UpdaterControllers.h"

#include "QuorvaneApp/Updates/FeedUpdaterController.h"

#include <utility>

std::unique_ptr<UpdaterController> makeUpdaterController(const std::optional<QUrl>& feed,
                                                         UpdatePresenter& presenter,
                                                         std::function<void(const QUrl&)> openPage) {
    auto controller = std::make_unique<FeedUpdaterController>(
        FeedUpdaterController::Setup{.feed = feed, .presenter = presenter, .openPage = std::move(openPage)});
    controller->start();
    return controller;
}

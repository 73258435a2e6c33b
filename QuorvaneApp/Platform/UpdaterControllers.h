#pragma once

#include "QuorvaneApp/Updates/UpdaterController.h"

#include <functional>
#include <memory>
#include <optional>

class UpdatePresenter;

/// The update check of the system that the program was built for, begun with its automatic checks. The arguments
/// are for the project's own check: `feed` is absent in a build without one, `openPage` opens the user's browser,
/// and the presenter must outlive what is returned. Sparkle finds its feed in the bundle's property list and brings
/// windows of its own.
std::unique_ptr<UpdaterController> makeUpdaterController(const std::optional<QUrl>& feed,
                                                         UpdatePresenter& presenter,
                                                         std::function<void(const QUrl& page)> openPage);

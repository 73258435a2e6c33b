#pragma once

#include "QuorvaneApp/Updates/AvailableUpdate.h"
#include "QuorvaneApp/Updates/UpdateAlert.h"

#include <functional>

/// What the user does about an update. Closing the window is `remindLater`.
enum class UpdateChoice { skipVersion, remindLater, openPage };

/// Shows what came of a check. Every operation returns at once.
class UpdatePresenter {
public:
    using Answer = std::function<void(UpdateChoice)>;

    virtual ~UpdatePresenter() = default;
    /// In front of the program's windows, with one button.
    virtual void show(const UpdateAlert& alert) = 0;
    /// Offers the update, in place of one that is still offered; `chosen` is called at most once.
    virtual void offer(const AvailableUpdate& update, Answer chosen) = 0;
};

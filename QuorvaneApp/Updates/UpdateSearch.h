#pragma once

#include "QuorvaneApp/Updates/AvailableUpdate.h"
#include "QuorvaneApp/Updates/UpdateFeed.h"

#include <optional>
#include <vector>

/// The program and the computer that an update is looked for.
struct UpdateTarget {
    QString version;        ///< of the running program
    QString system;         ///< the operating system's mark in the feed, such as "linux"
    QString systemVersion;  ///< what an item's minimum is compared with

    /// This program on this computer. On Linux the system's version is the kernel's.
    static UpdateTarget current();
};

/// The newest release that names the target's system, runs on its version, and is newer than the program; absent
/// when there is none. Of equal versions the first counts. Items of other channels than the releases' are left
/// out.
std::optional<AvailableUpdate> findUpdate(const std::vector<FeedItem>& items, const UpdateTarget& target);

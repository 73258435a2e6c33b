#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>

/// Ends the program unless what a reader made of a lockfile holds together: all text is valid UTF-8, every place leads to an
/// entry, every entry but an unreadable or own one has a name, and roles and ways can be followed.
void checkLockfile(const std::optional<ScanKit::Lockfile>& lockfile);

/// The same, and no two entries have one key. A yarn.lock may repeat an entry, as after a merge.
void checkLockfileWithoutRepeats(const std::optional<ScanKit::Lockfile>& lockfile);

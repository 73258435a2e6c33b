#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <string>

namespace ScanKit {

/// A lockfile in a line for each entry: what it is (own, unreadable, or by its role shipped, development, optional, lost), name and
/// version, then what it needs; with a question mark what may be missing.
inline std::string told(const Lockfile& lockfile) {
    const std::vector<LockedRole> roles = lockedRoles(lockfile);
    const auto identity = [&](std::size_t place) {
        return lockfile.entries.at(place).name + "@" + lockfile.entries[place].version;
    };
    std::string text;
    for (std::size_t i = 0; i < lockfile.entries.size(); ++i) {
        const LockedEntry& entry = lockfile.entries[i];
        text += entry.isUnreadable    ? "unreadable "
                : entry.isOwn         ? "own "
                : !roles[i].isReached ? "lost "
                : roles[i].isDev      ? "development "
                : roles[i].isOptional ? "optional "
                                      : "shipped ";
        text += identity(i);
        for (const std::size_t need : entry.needs) {
            text += " " + identity(need);
        }
        for (const std::size_t need : entry.needsIfPresent) {
            text += " ?" + identity(need);
        }
        text += "\n";
    }
    return text;
}

inline std::string told(const std::optional<Lockfile>& lockfile) {
    return lockfile ? told(*lockfile) : "no lockfile";
}

}  // namespace ScanKit

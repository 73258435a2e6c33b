#include "ScanKit/Readers/Lockfile.h"

#include <algorithm>

namespace ScanKit {
namespace {

/// Marks whatever is reached from these entries; places beyond the last entry are passed over.
void reach(const Lockfile& lockfile, const std::vector<std::size_t>& from, bool throughOptional,
           std::vector<bool>& reached) {
    std::vector<std::size_t> open = from;
    while (!open.empty()) {
        const std::size_t entry = open.back();
        open.pop_back();
        if (entry >= reached.size() || reached[entry]) {
            continue;
        }
        reached[entry] = true;
        if (!lockfile.knowsWays) {
            continue;
        }
        const LockedEntry& one = lockfile.entries[entry];
        open.insert(open.end(), one.needs.begin(), one.needs.end());
        if (throughOptional) {
            open.insert(open.end(), one.needsIfPresent.begin(), one.needsIfPresent.end());
        }
    }
}

std::vector<std::size_t> joined(std::vector<std::size_t> a, const std::vector<std::size_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

}  // namespace

std::vector<LockedRole> lockedRoles(const Lockfile& lockfile) {
    const std::size_t count = lockfile.entries.size();
    std::vector<LockedRole> roles(count);
    std::vector<bool> ships(count);
    std::vector<bool> isRequired(count);
    reach(lockfile, joined(lockfile.shipped, lockfile.shippedIfPresent), true, ships);
    std::vector<bool> develops(count);
    reach(lockfile, lockfile.development, true, develops);
    reach(lockfile, joined(lockfile.shipped, lockfile.development), false, isRequired);
    for (std::size_t i = 0; i < count; ++i) {
        roles[i] = {.isReached = ships[i] || develops[i],
                    .isDev = develops[i] && !ships[i],
                    .isOptional = (ships[i] || develops[i]) && !isRequired[i]};
    }
    return roles;
}

LockedWays::LockedWays(const Lockfile& lockfile)
    : cameFrom_(lockfile.entries.size()), isMet_(lockfile.entries.size()) {
    std::vector<std::size_t> queue;
    const auto meet = [&](std::size_t next, std::size_t from) {
        if (next < isMet_.size() && !isMet_[next]) {
            isMet_[next] = true;
            cameFrom_[next] = from;
            queue.push_back(next);
        }
    };
    for (const auto* roots : {&lockfile.shipped, &lockfile.shippedIfPresent, &lockfile.development}) {
        for (const std::size_t root : *roots) {
            meet(root, root);
        }
    }
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const LockedEntry& one = lockfile.entries[queue[i]];
        for (const auto* needs : {&one.needs, &one.needsIfPresent}) {
            for (const std::size_t need : *needs) {
                meet(need, queue[i]);
            }
        }
    }
}

std::vector<std::size_t> LockedWays::to(std::size_t entry) const {
    std::vector<std::size_t> way;
    if (entry >= isMet_.size() || !isMet_[entry]) {
        return way;
    }
    for (way.push_back(entry); cameFrom_[way.back()] != way.back();) {
        way.push_back(cameFrom_[way.back()]);
    }
    std::ranges::reverse(way);
    return way;
}

}  // namespace ScanKit

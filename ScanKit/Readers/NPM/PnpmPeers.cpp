#include "ScanKit/Readers/NPM/PnpmPeers.h"

#include <algorithm>
#include <optional>

namespace ScanKit::NPMParser {
namespace {

/// Needs that are looked at: more than those of a thousand members that come to five thousand packages each. They take
/// about a second.
constexpr std::size_t mostSteps = 20'000'000;

/// The peers that some member brings along; absent when that takes too many steps to know.
std::optional<std::set<PnpmNeed>> broughtAlong(const Lockfile& lockfile,
                                               const std::vector<PnpmMember>& members,
                                               const std::set<PnpmNeed>& peers) {
    std::set<PnpmNeed> brought;
    std::vector<const PnpmMember*> reachedBy(lockfile.entries.size(), nullptr);
    std::size_t steps = 0;
    for (const PnpmMember& member : members) {
        std::vector<std::size_t> left;
        const auto reach = [&](std::size_t place) {
            if (std::exchange(reachedBy[place], &member) != &member) {
                left.push_back(place);
            }
        };
        std::ranges::for_each(member.shipped, reach);
        while (!left.empty()) {
            const std::size_t place = left.back();
            left.pop_back();
            const LockedEntry& entry = lockfile.entries[place];
            for (const auto* const needs : {&entry.needs, &entry.needsIfPresent}) {
                for (const std::size_t next : *needs) {
                    const bool isPeer = peers.contains({place, next});
                    if (isPeer && member.development.contains(next)) {
                        continue;
                    }
                    if (isPeer) {
                        brought.emplace(place, next);
                    }
                    reach(next);
                }
                steps += needs->size() + 1;
            }
            if (steps > mostSteps) {
                return std::nullopt;
            }
        }
    }
    return brought;
}

}  // namespace

void leaveOutPeers(Lockfile& lockfile, const std::vector<PnpmMember>& members,
                   const std::set<PnpmNeed>& peers) {
    if (peers.empty()) {
        return;
    }
    const std::optional<std::set<PnpmNeed>> brought = broughtAlong(lockfile, members, peers);
    for (const PnpmNeed& need : peers) {
        if (brought && !brought->contains(need)) {
            LockedEntry& entry = lockfile.entries[need.first];
            std::erase(entry.needs, need.second);
            std::erase(entry.needsIfPresent, need.second);
        }
    }
}

}  // namespace ScanKit::NPMParser

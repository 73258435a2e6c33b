#include "Fuzz/CheckedLockfile.h"
#include "ScanKit/Support/Text.h"

#include <cstddef>
#include <cstdlib>
#include <set>
#include <string_view>
#include <vector>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace

void checkLockfile(const std::optional<ScanKit::Lockfile>& lockfile) {
    if (!lockfile) {
        return;
    }
    const std::size_t count = lockfile->entries.size();
    const auto checkPlaces = [&](const std::vector<std::size_t>& places) {
        for (const std::size_t place : places) {
            check(place < count);
        }
    };
    for (const ScanKit::LockedEntry& entry : lockfile->entries) {
        check(ScanKit::Text::isValidUtf8(entry.key + entry.name + entry.version + entry.source.value_or("")));
        check(!entry.name.empty() || entry.isOwn || entry.isUnreadable);
        checkPlaces(entry.needs);
        checkPlaces(entry.needsIfPresent);
    }
    checkPlaces(lockfile->shipped);
    checkPlaces(lockfile->shippedIfPresent);
    checkPlaces(lockfile->development);
    check(ScanKit::lockedRoles(*lockfile).size() == count);
    const ScanKit::LockedWays ways(*lockfile);
    for (std::size_t entry = 0; entry < count; ++entry) {
        check(ways.to(entry).size() <= count);
    }
}

void checkLockfileWithoutRepeats(const std::optional<ScanKit::Lockfile>& lockfile) {
    checkLockfile(lockfile);
    if (!lockfile) {
        return;
    }
    std::set<std::string_view> keys;
    for (const ScanKit::LockedEntry& entry : lockfile->entries) {
        check(keys.insert(entry.key).second);
    }
}

#include "ScanKit/Readers/Lockfile.h"

#include <gmock/gmock.h>

namespace ScanKit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "app" ships a, which needs b and may have c; develops with d, which needs b and e; e and f need each other.
Lockfile sample() {
    Lockfile lockfile;
    for (const char* name : {"a", "b", "c", "d", "e", "f", "lost"}) {
        lockfile.entries.push_back({.key = name, .name = name, .version = "1"});
    }
    lockfile.entries[0].needs = {1};
    lockfile.entries[0].needsIfPresent = {2};
    lockfile.entries[3].needs = {1, 4};
    lockfile.entries[4].needs = {5, 99};
    lockfile.entries[5].needs = {4};
    lockfile.shipped = {0};
    lockfile.development = {3};
    return lockfile;
}

std::string rolesOf(const Lockfile& lockfile) {
    std::string text;
    for (const LockedRole& role : lockedRoles(lockfile)) {
        text += !role.isReached ? '-' : role.isOptional ? 'o' : role.isDev ? 'd' : 's';
    }
    return text;
}

TEST(Lockfile, TellsWhatShipsFromWhoNeedsWhom) {
    Lockfile lockfile = sample();
    EXPECT_EQ(rolesOf(lockfile), "ssoddd-");
    lockfile.shippedIfPresent = {5};
    EXPECT_EQ(rolesOf(lockfile), "ssodss-") << "what may be missing ships where it is there";
    lockfile.knowsWays = false;
    EXPECT_EQ(rolesOf(lockfile), "s--d-o-") << "only what the file says of the entry itself";
}

TEST(Lockfile, KnowsTheShortestWayToEach) {
    const Lockfile lockfile = sample();
    const LockedWays ways(lockfile);
    EXPECT_THAT(ways.to(0), ElementsAre(0));
    EXPECT_THAT(ways.to(1), ElementsAre(0, 1)) << "shipped before development";
    EXPECT_THAT(ways.to(5), ElementsAre(3, 4, 5));
    EXPECT_THAT(ways.to(6), IsEmpty());
    EXPECT_THAT(ways.to(99), IsEmpty());
}

}  // namespace
}  // namespace ScanKit

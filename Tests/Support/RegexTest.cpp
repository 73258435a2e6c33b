#include "ScanKit/Support/Regex.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(Regex, GivesByteOffsetsIntoUtf8) {
    const Regex digits("\\d+");
    EXPECT_EQ(digits.firstMatch("é 12 34"), (Regex::Match{3, 5}));
    EXPECT_EQ(digits.firstMatch("none"), std::nullopt);
    EXPECT_EQ(digits.firstMatch("\xFF 7"), (Regex::Match{2, 3}));
}

TEST(Regex, LooksAheadAndReplacesLiterally) {
    const Regex version("\\bv\\.?(?=\\s*\\d)");
    EXPECT_EQ(version.replacingMatches("mpl v2 gplv3 v. 4 v", "$1"), "mpl $12 gplv3 $1 4 v");
    EXPECT_EQ(version.replacingMatches("", "x"), "");
}

}  // namespace
}  // namespace ScanKit

#include "ScanKit/Reports/Paper.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <tuple>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(Paper, IsWhatIsUsedInTheTerritoryOfTheLocale) {
    for (const auto& [all, paper, language, expected] : {std::tuple{"", "", "en_US.UTF-8", Paper::letter},
                                                         {"", "", "fr_CA", Paper::letter},
                                                         {"", "", "de_DE.UTF-8", Paper::a4},
                                                         {"", "", "en_GB", Paper::a4},
                                                         {"", "", "C.UTF-8", Paper::letter},
                                                         {"", "", "", Paper::letter},
                                                         {"", "de_DE", "en_US", Paper::a4},
                                                         {"es_MX", "de_DE", "de_DE", Paper::letter},
                                                         {"", "", "sr_RS@latin", Paper::a4}}) {
        const EnvironmentVariable first("LC_ALL", all), second("LC_PAPER", paper), third("LANG", language);
        EXPECT_EQ(paperOfEnvironment(), expected) << all << ", " << paper << ", " << language;
    }
}

}  // namespace
}  // namespace ScanKit

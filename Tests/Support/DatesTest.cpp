#include "Tests/Builders/Printers.h"
#include "Tests/Builders/TemporaryFolder.h"

namespace ScanKit {
namespace {

constexpr Date at(long long seconds) {
    return Date{std::chrono::seconds{seconds}};
}

TEST(Dates, WritesAndReadsIso8601) {
    EXPECT_EQ(Dates::iso8601(at(1767621802)), "2026-01-05T14:03:22Z");
    for (const long long seconds : {0LL, -1LL, 951782400LL, 253402300799LL}) {
        EXPECT_EQ(Dates::fromIso8601(Dates::iso8601(at(seconds))), at(seconds));
    }
    for (const char* text :
         {"", "2026-01-05", "2026-01-05 14:03:22Z", "2026-02-30T00:00:00Z", "2026-01-05T24:00:00Z",
          "2026-01-05T23:60:00Z", "2026-01-05T23:59:60Z", "2026-01-05T14:03:22+"}) {
        EXPECT_EQ(Dates::fromIso8601(text), std::nullopt) << text;
    }
}

TEST(Dates, TakesTheDateOfAReproducibleBuild) {
    // The first and the last second of the years 0 to 9999, and those beside them.
    for (const long long seconds : {1767621802LL, -62167219200LL, 253402300799LL}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", std::to_string(seconds));
        EXPECT_EQ(Dates::current(), at(seconds));
    }
    for (const char* useless : {"", "soon", "12 ", "-62167219201", "253402300800", "999999999999999999"}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", useless);
        EXPECT_GT(Dates::current(), at(1767621802)) << useless;
        EXPECT_LT(Dates::current(), at(253402300799)) << useless;
    }
}

TEST(Dates, WritesLongDatesInUSEnglish) {
    EXPECT_EQ(Dates::longDate(at(1767614400)), "January 5, 2026");  // 12:00 UTC: one day in most zones
    // Shortly after midnight in UTC. The last form is one that needs the system's own routine.
    constexpr std::pair<const char*, const char*> cases[]{{"America/New_York", "January 4, 2026"},
                                                          {"Asia/Tokyo", "January 5, 2026"},
                                                          {"<-08>8", "January 4, 2026"}};
    for (const auto& [name, date] : cases) {
        const EnvironmentVariable zone("TZ", name);
        EXPECT_EQ(Dates::longDate(at(1767571200)), date) << name;
    }
}

}  // namespace
}  // namespace ScanKit

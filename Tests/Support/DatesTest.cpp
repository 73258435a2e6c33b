#include "ScanKit/Support/Dates.h"

#include "Tests/Builders/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

Date at(long long seconds) {
    return Date{std::chrono::seconds{seconds}};
}

TEST(Dates, WritesAndReadsIso8601) {
    EXPECT_EQ(Dates::iso8601(at(1767621802)), "2026-01-05T14:03:22Z");
    for (const long long seconds : {0LL, -1LL, 951782400LL, 253402300799LL}) {
        EXPECT_EQ(Dates::fromIso8601(Dates::iso8601(at(seconds))), at(seconds));
    }
    for (const char* text : {"", "2026-01-05", "2026-01-05 14:03:22Z", "2026-02-30T00:00:00Z",
                             "2026-01-05T24:00:00Z", "2026-01-05T14:03:22+"}) {
        EXPECT_FALSE(Dates::fromIso8601(text)) << text;
    }
}

TEST(Dates, TakesTheDateOfAReproducibleBuild) {
    {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", "1767621802");
        EXPECT_EQ(Dates::current(), at(1767621802));
    }
    for (const char* useless : {"", "soon", "12 ", "999999999999999999"}) {
        const EnvironmentVariable epoch("SOURCE_DATE_EPOCH", useless);
        EXPECT_GT(Dates::current(), at(1767621802)) << useless;
    }
}

TEST(Dates, WritesLongDatesInUSEnglish) {
    EXPECT_EQ(Dates::longDate(at(1767614400)), "January 5, 2026");  // 12:00 UTC: one day in most zones
    struct Row {
        const char* zone;
        const char* date;
    };
    // Shortly after midnight in UTC. The last two forms are those that need the system's own routine.
    for (const Row& row : {Row{"UTC", "January 5, 2026"}, Row{"America/New_York", "January 4, 2026"},
                           Row{"Asia/Tokyo", "January 5, 2026"}, Row{"<-08>8", "January 4, 2026"},
                           Row{"EST5EDT,M3.2.0,M11.1.0", "January 4, 2026"}}) {
        const EnvironmentVariable zone("TZ", row.zone);
        EXPECT_EQ(Dates::longDate(at(1767571200)), row.date) << row.zone;
    }
}

}  // namespace
}  // namespace ScanKit

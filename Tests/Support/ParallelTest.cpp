#include "ScanKit/Support/Parallel.h"

#include <atomic>
#include <vector>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(Parallel, VisitsEveryIndexOnce) {
    for (const unsigned threads : {1U, 2U, 8U}) {
        std::vector<std::atomic<int>> visits(10'000);
        forEachIndex(
            visits.size(), [&](std::size_t i) { ++visits[i]; }, {}, threads);
        for (const auto& count : visits) {
            ASSERT_EQ(count, 1) << threads << " threads";
        }
    }
}

TEST(Parallel, BeginsNoFurtherBodyOnceStopped) {
    for (const unsigned threads : {1U, 4U}) {
        std::stop_source source;
        std::atomic<int> begun = 0;
        const auto body = [&](std::size_t) {
            if (++begun == 100) {
                source.request_stop();
            }
        };
        forEachIndex(1'000'000, body, source.get_token(), threads);
        EXPECT_LT(begun, 100 + 8);
    }
}

}  // namespace
}  // namespace ScanKit

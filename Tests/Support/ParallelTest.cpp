#include "ScanKit/Support/Parallel.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(Parallel, VisitsEveryIndexOnceAndNoFurtherOneOnceStopped) {
    // A limit that makes no sense is mended: none may end the program.
    for (const unsigned threads : {0U, 1U, 2U, 8U, std::numeric_limits<unsigned>::max()}) {
        std::vector<std::atomic<int>> visits(10'000);
        const auto visit = [&](std::size_t i) { ++visits[i]; };
        forEachIndex(visits.size(), visit, {}, threads);
        EXPECT_TRUE(std::ranges::all_of(visits, [](const auto& count) { return count == 1; })) << threads;

        std::stop_source source;
        std::atomic<int> begun = 0;
        const auto stopAtTheHundredth = [&](std::size_t) { return ++begun == 100 && source.request_stop(); };
        forEachIndex(1'000'000, stopAtTheHundredth, source.get_token(), threads);
        EXPECT_LT(begun, 100 + 256) << threads;
    }
}

}  // namespace
}  // namespace ScanKit

#include "ScanKit/Support/Parallel.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <thread>
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

TEST(Parallel, HasDoneItsBackgroundWorkWhenTheObjectEnds) {
    // Many, for whether another thread or the waiting one does it is a matter of luck.
    for (int i = 0; i < 200; ++i) {
        std::vector<int> made;
        {
            const BackgroundWork work([&] { made.assign(1'000, i); });
        }
        EXPECT_EQ(made, std::vector<int>(1'000, i));
    }
    for (const unsigned threads : {0U, 1U, 8U}) {
        std::thread::id worker;
        const BackgroundWork work([&] { worker = std::this_thread::get_id(); }, threads);
        EXPECT_EQ(worker, std::this_thread::get_id()) << "at once, as threads are limited";
    }
}

}  // namespace
}  // namespace ScanKit

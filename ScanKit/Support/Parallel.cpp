#include "ScanKit/Support/Parallel.h"

#include <algorithm>

#ifdef QUORVANE_PARALLEL_ON_STD_THREAD
#include <atomic>
#include <thread>
#include <vector>
#else
#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_for.h>
#include <oneapi/tbb/task_arena.h>
#include <oneapi/tbb/task_group.h>
#endif

namespace ScanKit {
namespace {

/// Of no use beyond the number of cores, and a system gives only so many.
constexpr unsigned mostThreads = 256;

std::optional<unsigned> sensible(std::optional<unsigned> threadLimit) {
    return threadLimit ? std::optional(std::clamp(*threadLimit, 1U, mostThreads)) : std::nullopt;
}

}  // namespace

#ifdef QUORVANE_PARALLEL_ON_STD_THREAD

void forEachIndex(std::size_t count, const std::function<void(std::size_t)>& body, const StopToken& stop,
                  std::optional<unsigned> threadLimit) {
    const std::size_t wanted =
        sensible(threadLimit).value_or(std::max(2U, std::thread::hardware_concurrency()));
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < count && !stop.stop_requested(); i = next++) {
            body(i);
        }
    };
    std::vector<std::jthread> threads;
    for (std::size_t i = 1; i < std::min(wanted, count); ++i) {
        threads.emplace_back(work);
    }
    work();
}

struct BackgroundWork::Running {
    std::jthread thread;
};

BackgroundWork::BackgroundWork(std::function<void()> work, std::optional<unsigned> threadLimit)
    : running_(std::make_unique<Running>()) {
    if (threadLimit) {
        work();
    } else {
        running_->thread = std::jthread(std::move(work));
    }
}

BackgroundWork::~BackgroundWork() = default;

#else

void forEachIndex(std::size_t count, const std::function<void(std::size_t)>& body, const StopToken& stop,
                  std::optional<unsigned> threadLimit) {
    const auto run = [&] {
        tbb::parallel_for(
            tbb::blocked_range<std::size_t>(0, count), [&](const tbb::blocked_range<std::size_t>& range) {
                for (std::size_t i = range.begin(); i < range.end() && !stop.stop_requested(); ++i) {
                    body(i);
                }
            });
    };
    const std::optional<unsigned> threads = sensible(threadLimit);
    if (threads == 1U) {
        for (std::size_t i = 0; i < count && !stop.stop_requested(); ++i) {
            body(i);
        }
    } else if (threads) {
        // The library never uses more threads than cores unless told so.
        const tbb::global_control allowed(tbb::global_control::max_allowed_parallelism, *threads);
        tbb::task_arena(static_cast<int>(*threads)).execute(run);
    } else {
        run();
    }
}

struct BackgroundWork::Running {
    tbb::task_group tasks;
};

BackgroundWork::BackgroundWork(std::function<void()> work, std::optional<unsigned> threadLimit)
    : running_(std::make_unique<Running>()) {
    if (threadLimit) {
        work();
    } else {
        running_->tasks.run(std::move(work));
    }
}

BackgroundWork::~BackgroundWork() {
    running_->tasks.wait();
}

#endif

}  // namespace ScanKit

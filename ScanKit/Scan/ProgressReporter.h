#pragma once

#include "ScanKit/Scan/ScanProgress.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string_view>
#include <utility>

namespace ScanKit {

/// Counts finished packages from any thread and tells the caller of a scan now and then: one call at a time, at
/// most fifty times a second, so that telling never slows the work.
class ProgressReporter {
public:
    explicit ProgressReporter(std::function<void(const ScanProgress&)> tell) : tell_(std::move(tell)) {}

    /// Begins to count anew towards a known number of packages, and tells of the first of them at once. Not while
    /// packages are being counted.
    void begin(std::size_t total);
    void packageDone(std::string_view name);

private:
    static constexpr std::chrono::milliseconds interval{20};

    std::function<void(const ScanProgress&)> tell_;
    std::atomic<std::size_t> done_ = 0;
    std::size_t total_ = 0;
    std::mutex telling_;
    std::chrono::steady_clock::time_point toldAt_;  ///< guarded by `telling_`
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Scan/ScanProgress.h"

#include <chrono>
#include <mutex>

/// One line of progress on standard error, written over itself, and cleared at the end. Nothing shows when
/// standard error is no terminal or while the scan has not taken half a second yet.
class ProgressLine {
public:
    explicit ProgressLine(bool isWanted);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// May be called from any thread.
    void show(const ScanKit::ScanProgress& progress);

private:
    std::mutex mutex_;
    const bool isShown_;
    const std::chrono::steady_clock::time_point began_;
    bool hasWritten_ = false;
};

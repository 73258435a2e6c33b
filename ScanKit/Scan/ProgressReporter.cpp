#include "ScanKit/Scan/ProgressReporter.h"

namespace ScanKit {

void ProgressReporter::begin(std::size_t total) {
    done_ = 0;
    total_ = total;
    toldAt_ = {};
}

void ProgressReporter::packageDone(std::string_view name) {
    const std::size_t done = ++done_;
    const std::unique_lock lock(telling_, std::try_to_lock);
    if (!tell_ || !lock) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now - toldAt_ >= interval) {
        toldAt_ = now;
        tell_({done, total_, name});
    }
}

}  // namespace ScanKit

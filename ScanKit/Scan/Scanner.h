#pragma once

#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Scan/ScanProgress.h"
#include "ScanKit/Support/FileCache.h"
#include "ScanKit/Support/Parallel.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace ScanKit {

/// How the caller follows and ends a scan.
struct ScanControl {
    /// Called from any thread, one call at a time, at most some fifty times a second.
    std::function<void(const ScanProgress&)> progress;
    /// When a stop is requested the scan returns soon, with a result that holds only part and is to be dropped.
    StopToken stop;
    /// At most this many threads, and at least one; as many as the machine has cores when absent.
    std::optional<unsigned> threadLimit;
    /// What scans of the same folder leave for each other: one that finds here what an earlier one made of files that
    /// are still the same takes it from here. The result is the same either way. Null to read everything.
    FileCache* cache = nullptr;
};

namespace Scanner {

/// Reads what detection found, for the ecosystems in `options`, and identifies every dependency. Never fails:
/// what cannot be read is skipped, and what the user can mend is a warning. The same folder and options give the
/// same result whatever the number of threads. Relative paths are taken from the working folder.
/// An empty set of ecosystems reads nothing. Holds no state between calls but in a cache, and may run on any thread; without
/// a `detection` it detects first.
ScanResult scan(const std::filesystem::path& root, const ScanOptions& options,
                const std::optional<Detection>& detection = {}, const ScanControl& control = {});

}  // namespace Scanner
}  // namespace ScanKit

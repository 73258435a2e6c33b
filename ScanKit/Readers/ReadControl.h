#pragma once

#include "ScanKit/Support/FileCache.h"
#include "ScanKit/Support/Parallel.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace ScanKit {

/// How the caller follows and ends the reading of many package folders. What is read never depends on it, except
/// that a stop leaves packages out.
struct ReadControl {
    /// When a stop is requested the reader returns soon, with a part that is to be dropped.
    StopToken stop;
    /// At most this many threads; as many as the machine has cores when absent.
    std::optional<unsigned> threadLimit;
    /// Called with the name of each package whose folder was read or is not there, from any thread, several at a
    /// time, in no particular order. The name lives only during the call.
    std::function<void(std::string_view)> packageRead;
    /// What an earlier reading made of files that are still the same need not be made again; null to read all.
    FileCache::Round* cache = nullptr;
};

/// Calls `read` for every index below `count` in parallel, as `forEachIndex` does, and tells the caller the name
/// that it returns.
void forEachPackage(std::size_t count, const ReadControl& control,
                    const std::function<std::string(std::size_t)>& read);

}  // namespace ScanKit

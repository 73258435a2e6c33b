#pragma once

#include <cstddef>
#include <string_view>

namespace ScanKit {

/// What a running scan tells. First the package folders are read, and `total` is 0 since their number is not
/// known yet; then each package's license is identified, and `done` counts from 0 again.
struct ScanProgress {
    std::size_t done = 0;
    std::size_t total = 0;
    std::string_view name;  ///< of the package that was just done; lives only during the call
};

}  // namespace ScanKit

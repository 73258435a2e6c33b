#include "ScanKit/Identification/TextReading.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Any bytes can stand in a license file; every score is a share.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto reading = ScanKit::readLicenseText({reinterpret_cast<const char*>(data), size});
    for (const auto& match : reading.matches) {
        if (match.score && !(*match.score >= 0.7 && *match.score <= 1)) {
            std::abort();
        }
    }
    return 0;
}

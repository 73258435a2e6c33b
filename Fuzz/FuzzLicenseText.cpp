#include "ScanKit/Identification/TextReading.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Any bytes can stand in a license file; every score is a share, and every part that is beyond the licenses is a part
/// of the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto reading = ScanKit::readLicenseText(text);
    for (const std::string_view part : ScanKit::partsBeyondLicenses(text)) {
        if (part.data() < text.data() || part.data() + part.size() > text.data() + text.size()) {
            std::abort();
        }
    }
    for (const auto& match : reading.matches) {
        if (match.score && !(*match.score >= 0.7 && *match.score <= 1)) {
            std::abort();
        }
    }
    return 0;
}

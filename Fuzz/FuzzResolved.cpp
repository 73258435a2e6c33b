#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A Package.resolved of any bytes; no pin comes without an identity.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto pins = ScanKit::SwiftPMParser::pins({reinterpret_cast<const char*>(data), size});
    for (const auto& pin : pins.value_or(std::vector<ScanKit::SwiftPMParser::Pin>{})) {
        if (pin.identity.empty()) {
            std::abort();
        }
    }
    return 0;
}

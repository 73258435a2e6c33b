#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A Package.resolved of any bytes; no pin comes without an identity.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& pin : ScanKit::SwiftPMParser::pins({reinterpret_cast<const char*>(data), size})) {
        if (pin.identity.empty()) {
            std::abort();
        }
    }
    return 0;
}

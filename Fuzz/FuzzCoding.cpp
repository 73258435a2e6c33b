#include "ScanKit/Model/Coding.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// What decodes encodes to a text that decodes to the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto result = ScanKit::decodedScanResult({reinterpret_cast<const char*>(data), size});
    if (result && ScanKit::decodedScanResult(encoded(*result)) != result) {
        std::abort();
    }
    return 0;
}

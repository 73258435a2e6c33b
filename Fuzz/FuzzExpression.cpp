#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/SPDX.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// What parses prints to a text that parses to the same; a name is never taken for an unknown license.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto expression = ScanKit::LicenseExpression::parse(text);
    if (expression && ScanKit::LicenseExpression::parse(expression->description()) != expression) {
        std::abort();
    }
    const auto id = ScanKit::SPDX::normalize(text);
    if (id && ScanKit::SPDX::lookup(*id) == nullptr) {
        std::abort();
    }
    ScanKit::LicenseExpression::fromSeparatedNames(text);
    return 0;
}

#include "ScanKit/Readers/NPM/NPMParser.h"
#include "ScanKit/Support/Text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A lockfile of any bytes; nothing is installed beside it. All text that comes out is valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto packages = ScanKit::NPMParser::dependencies(bytes, "/nowhere", {.threadLimit = 1});
    for (const auto& package : packages.value_or(std::vector<ScanKit::RawDependency>{})) {
        if (!ScanKit::Text::isValidUtf8(package.name + package.version) || package.folder) {
            std::abort();
        }
    }
    return 0;
}

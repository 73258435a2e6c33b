#include "Fuzz/CheckedLockfile.h"
#include "ScanKit/Readers/NPM/YarnLock.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// A yarn.lock of any bytes, in either format.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ScanKit;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const NPMParser::Manifest manifest{.below = ".",
                                       .name = "app",
                                       .dependencies = {{"a", "^1.0.0"}},
                                       .developmentDependencies = {{"b", "^2.0.0"}},
                                       .resolutions = {{"a/b", "2.0.0"}, {"**/c", "1"}}};
    checkLockfile(NPMParser::yarnLock(bytes, {manifest}));
    return 0;
}

#include "Fuzz/CheckedLockfile.h"
#include "ScanKit/Readers/NPM/BunLock.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A Bun lockfile of any bytes; nothing is installed beside it, so no entry has a folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lockfile = ScanKit::NPMParser::bunLock(bytes);
    checkLockfileWithoutRepeats(lockfile);
    if (!lockfile) {
        return 0;
    }
    for (const auto& folder : ScanKit::NPMParser::bunFolders(*lockfile, "/nowhere", {.threadLimit = 1})) {
        if (folder) {
            std::abort();
        }
    }
    return 0;
}

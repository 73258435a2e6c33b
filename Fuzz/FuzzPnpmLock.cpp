#include "Fuzz/CheckedLockfile.h"
#include "ScanKit/Readers/NPM/PnpmLock.h"
#include "ScanKit/Readers/NPM/PnpmModules.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A pnpm lockfile of any bytes; nothing is installed beside it, so no entry has a folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lockfile = ScanKit::NPMParser::pnpmLock(bytes);
    checkLockfileWithoutRepeats(lockfile);
    if (!lockfile) {
        return 0;
    }
    for (const auto& folder : ScanKit::NPMParser::pnpmFolders(*lockfile, "/nowhere", {.threadLimit = 1})) {
        if (folder) {
            std::abort();
        }
    }
    return 0;
}

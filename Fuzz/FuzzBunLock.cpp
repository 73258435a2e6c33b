#include "ScanKit/Readers/NPM/BunLock.h"
#include "ScanKit/Support/Text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A Bun lockfile of any bytes; nothing is installed beside it. What it says leads to entries that are there, in text that is
/// valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto lockfile = ScanKit::NPMParser::bunLock(bytes);
    if (!lockfile) {
        return 0;
    }
    for (const auto& entry : lockfile->entries) {
        if (!ScanKit::Text::isValidUtf8(entry.key + entry.name + entry.version) ||
            (entry.name.empty() && !entry.isOwn && !entry.isUnreadable)) {
            std::abort();
        }
        for (const std::size_t need : entry.needs) {
            if (need >= lockfile->entries.size()) {
                std::abort();
            }
        }
    }
    for (const auto& folder : ScanKit::NPMParser::bunFolders(*lockfile, "/nowhere", {.threadLimit = 1})) {
        if (folder) {
            std::abort();
        }
    }
    return 0;
}

#include "ScanKit/Readers/NPM/YarnLock.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A yarn.lock of any bytes, in either format. All text that comes out is valid UTF-8, and all places lead to entries.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ScanKit;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const NPMParser::Manifest manifest{.below = ".",
                                       .name = "app",
                                       .dependencies = {{"a", "^1.0.0"}},
                                       .developmentDependencies = {{"b", "^2.0.0"}},
                                       .resolutions = {{"a/b", "2.0.0"}, {"**/c", "1"}}};
    const std::optional<Lockfile> lockfile = NPMParser::yarnLock(bytes, {manifest});
    if (!lockfile) {
        return 0;
    }
    const auto leadsNowhere = [&](std::size_t place) { return place >= lockfile->entries.size(); };
    for (const LockedEntry& entry : lockfile->entries) {
        if (!Text::isValidUtf8(entry.key + entry.name + entry.version + entry.source.value_or("")) ||
            std::ranges::any_of(entry.needs, leadsNowhere) ||
            std::ranges::any_of(entry.needsIfPresent, leadsNowhere)) {
            std::abort();
        }
    }
    return lockedRoles(*lockfile).size() == lockfile->entries.size() ? 0 : 1;
}

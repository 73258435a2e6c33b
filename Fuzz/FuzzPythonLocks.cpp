#include "ScanKit/Readers/Python/PdmLock.h"
#include "ScanKit/Readers/Python/PipfileLock.h"
#include "ScanKit/Readers/Python/PoetryLock.h"
#include "ScanKit/Readers/Python/PyLock.h"
#include "ScanKit/Readers/Python/UvLock.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string_view>

namespace {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Every place names an entry, every entry has a key of its own, and one that can be read has a name.
void check(const std::optional<ScanKit::Lockfile>& lockfile) {
    if (!lockfile) {
        return;
    }
    const std::size_t count = lockfile->entries.size();
    const auto checkPlaces = [&](const std::vector<std::size_t>& places) {
        for (const std::size_t place : places) {
            check(place < count);
        }
    };
    std::set<std::string_view> keys;
    for (const ScanKit::LockedEntry& entry : lockfile->entries) {
        checkPlaces(entry.needs);
        checkPlaces(entry.needsIfPresent);
        check(keys.insert(entry.key).second);
        check(entry.isUnreadable || !entry.name.empty());
    }
    checkPlaces(lockfile->shipped);
    checkPlaces(lockfile->shippedIfPresent);
    checkPlaces(lockfile->development);
    check(ScanKit::lockedRoles(*lockfile).size() == count);
    check(count == 0 || ScanKit::LockedWays(*lockfile).to(count - 1).size() <= count);
}

}  // namespace

/// A lockfile of any text, taken for each of the formats in turn, and for the project beside it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string project(text);
    check(ScanKit::PythonParser::poetryLock(text, project));
    check(ScanKit::PythonParser::pdmLock(text, project));
    check(ScanKit::PythonParser::poetryLock(text, std::nullopt));
    check(ScanKit::PythonParser::uvLock(text));
    check(ScanKit::PythonParser::pyLock(text));
    check(ScanKit::PythonParser::pipfileLock(text));
    return 0;
}

#include "Fuzz/CheckedLockfile.h"
#include "ScanKit/Readers/Python/PdmLock.h"
#include "ScanKit/Readers/Python/PipfileLock.h"
#include "ScanKit/Readers/Python/PoetryLock.h"
#include "ScanKit/Readers/Python/PyLock.h"
#include "ScanKit/Readers/Python/UvLock.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// A lockfile of any text, taken for each of the formats in turn, and for the project beside it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::string project(text);
    checkLockfileWithoutRepeats(ScanKit::PythonParser::poetryLock(text, project));
    checkLockfileWithoutRepeats(ScanKit::PythonParser::pdmLock(text, project));
    checkLockfileWithoutRepeats(ScanKit::PythonParser::poetryLock(text, std::nullopt));
    checkLockfileWithoutRepeats(ScanKit::PythonParser::uvLock(text));
    checkLockfileWithoutRepeats(ScanKit::PythonParser::pyLock(text));
    checkLockfileWithoutRepeats(ScanKit::PythonParser::pipfileLock(text));
    return 0;
}

#include "ScanKit/Readers/Python/PythonParser.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <utility>

/// Requirements and poetry.lock files of any text; no requirement comes without a name, no included file without one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    auto all = ScanKit::PythonParser::requirementsFromText(text, false);
    for (auto& requirement : ScanKit::PythonParser::requirementsFromPoetryLock(text)) {
        all.push_back(std::move(requirement));
    }
    for (const auto& include : ScanKit::PythonParser::includesOfText(text)) {
        if (include.file.empty()) {
            std::abort();
        }
    }
    for (const auto& requirement : all) {
        if (requirement.name.empty()) {
            std::abort();
        }
    }
    return 0;
}

#include "ScanKit/Readers/Python/PoetryLock.h"

#include "ScanKit/Support/Text.h"

#include <utility>

namespace ScanKit::PythonParser {
namespace {

bool isKey(std::string_view line, std::string_view key) {
    const std::string_view rest = line.starts_with(key) ? line.substr(key.size()) : std::string_view{};
    return rest.starts_with(' ') || rest.starts_with('=');
}

/// What stands behind the equals sign, without its quotes.
std::string lockValue(std::string_view line) {
    const std::size_t sign = line.find('=');
    if (sign == std::string_view::npos) {
        return {};
    }
    return std::string(Text::trimmedOf(Text::trimmed(line.substr(sign + 1)), "\"'"));
}

void readLockLine(Requirement& package, std::string_view line) {
    if (isKey(line, "name")) {
        package.name = lockValue(line);
    } else if (isKey(line, "version")) {
        package.version = lockValue(line);
    } else if (line.starts_with("category")) {
        package.isDev = lockValue(line) == "dev";
    }
}

}  // namespace

std::vector<Requirement> requirementsFromPoetryLock(std::string_view text) {
    std::vector<Requirement> packages;
    bool readsKeys = false;
    for (std::string_view line : Text::nonEmptyLines(text)) {
        line = Text::trimmed(line);
        if (line == "[[package]]") {
            packages.emplace_back();
            readsKeys = true;
            // Below a package stand tables of its own dependencies, whose keys look the same.
        } else if (line.starts_with('[')) {
            readsKeys = false;
        } else if (readsKeys) {
            readLockLine(packages.back(), line);
        }
    }
    std::erase_if(packages, [](const Requirement& package) { return package.name.empty(); });
    return packages;
}

}  // namespace ScanKit::PythonParser

#include "ScanKit/Readers/Python/PackageName.h"

#include "ScanKit/Support/Text.h"

namespace ScanKit::PythonParser {

std::string normalizedName(std::string_view name) {
    std::string normalized;
    for (const char c : Text::lowercased(name)) {
        const bool isSeparator = c == '-' || c == '_' || c == '.';
        if (!isSeparator) {
            normalized += c;
        } else if (!normalized.ends_with('-')) {
            normalized += '-';
        }
    }
    return normalized;
}

}  // namespace ScanKit::PythonParser

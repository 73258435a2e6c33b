#include "ScanKit/Model/Dependency.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>

namespace ScanKit {
namespace {

constexpr std::size_t longestDeclaredShown = 40;

std::string firstLineShortened(std::string_view declared) {
    const std::string_view line = Text::firstLine(declared);
    if (Text::characterCount(line) <= longestDeclaredShown) {
        return std::string(line);
    }
    return std::string(Text::prefix(line, longestDeclaredShown - 1)) + "…";
}

}  // namespace

std::string Dependency::id() const {
    return std::string(rawValue(ecosystem)) + ":" + name + "@" + version;
}

bool Dependency::needsReview() const {
    return std::ranges::any_of(flags, [](Flag flag) { return flag != Flag::noLicenseFile; });
}

std::string Dependency::licenseDisplay() const {
    if (license) {
        return *license;
    }
    if (declared) {
        return "Unrecognized: " + firstLineShortened(*declared);
    }
    return "None found";
}

}  // namespace ScanKit

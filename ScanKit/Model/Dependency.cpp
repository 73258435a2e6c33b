#include "ScanKit/Model/Dependency.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>

namespace ScanKit {
namespace {

constexpr std::size_t longestDeclaredShown = 40;

std::string firstLineShortened(std::string_view declared) {
    const std::string_view line = Text::firstLine(declared);
    // Whole licenses pasted into the metadata would tear a column apart.
    if (Text::characterCount(line) <= longestDeclaredShown) {
        return std::string(line);
    }
    return std::string(Text::prefix(line, longestDeclaredShown - 1)) + "…";
}

}  // namespace

std::string Dependency::id() const {
    return std::string(rawValue(ecosystem)) + ":" + name + "@" + version;
}

/// A known license without its text asks for nothing but the text, which the NOTICE file mostly has.
bool Dependency::needsReview() const {
    return std::ranges::any_of(flags, [](Flag flag) { return flag != Flag::noLicenseFile; });
}

bool Dependency::has(Flag flag) const {
    return std::ranges::find(flags, flag) != flags.end();
}

bool Dependency::isUnknownOrMissing() const {
    return !license || has(Flag::unknown) || has(Flag::missing);
}

std::string Dependency::flagLabels(std::string_view separator) const {
    std::vector<std::string> labels;
    for (const Flag flag : flags) {
        labels.emplace_back(label(flag));
    }
    return Text::joined(labels, separator);
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

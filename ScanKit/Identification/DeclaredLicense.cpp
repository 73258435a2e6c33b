#include "ScanKit/Identification/DeclaredLicense.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ScanKit {
namespace {

constexpr std::size_t longestName = 150;

std::optional<LicenseExpression> expressionOfName(const std::string& name) {
    // Expressions first: "MIT OR Apache-2.0" squeezed as a name would be no license at all.
    if (std::optional<LicenseExpression> parsed = LicenseExpression::parse(name)) {
        return parsed;
    }
    if (const auto id = SPDX::normalize(name)) {
        return LicenseExpression::parse(*id).value_or(LicenseExpression::license(std::string(*id)));
    }
    return LicenseExpression::fromSeparatedNames(name);
}

/// Names, in upper case, that stand for a second license beside the one they are read as.
constexpr auto sharedNames = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"BSL", "BUSL-1.1"},
    {"BSL LICENSE", "BUSL-1.1"},
    {"BSL 1.1", "BUSL-1.1"},
    {"BSL-1.1", "BUSL-1.1"},
});

std::optional<LicenseExpression> otherReadingOf(std::string_view uppercasedName) {
    const auto row = std::ranges::find(sharedNames, Text::trimmed(uppercasedName),
                                       &std::pair<std::string_view, std::string_view>::first);
    return row == sharedNames.end() ? std::nullopt
                                    : std::optional(LicenseExpression::license(std::string(row->second)));
}

/// Whether the name has the form of an expression that joins known and unknown identifiers by "AND".
bool joinsKnownAndUnknown(std::string_view name) {
    bool joins = false;
    bool hasKnown = false;
    bool hasUnknown = false;
    bool isOperand = true;
    bool isException = false;
    std::string text = Text::replacingAll(Text::replacingAll(name, "(", " "), ")", " ");
    for (const std::string_view word : Text::split(text, " ")) {
        if (word.empty()) {
            continue;
        }
        const std::string keyword = Text::uppercased(word);
        const bool isOperator = keyword == "AND" || keyword == "OR" || keyword == "WITH";
        if (isOperator == isOperand) {
            return false;
        }
        joins |= keyword == "AND";
        if (isOperand && !isException) {
            (SPDX::lookup(word) != nullptr ? hasKnown : hasUnknown) = true;
        }
        isException = keyword == "WITH";
        isOperand = !isOperand;
    }
    return joins && hasKnown && hasUnknown;
}

}  // namespace

std::optional<std::string> declaredName(const RawDependency& package) {
    const std::optional<std::string>& declared = package.declared;
    if (!declared || Text::isBlank(*declared) || declared->find('\n') != std::string::npos ||
        Text::characterCount(*declared) > longestName) {
        return std::nullopt;
    }
    return declared;
}

DeclaredLicense declaredLicense(const RawDependency& package) {
    DeclaredLicense license;
    if (const std::optional<std::string> name = declaredName(package)) {
        const std::string uppercased = Text::uppercased(*name);
        license.isCustom = uppercased == "UNLICENSED" || uppercased.starts_with("SEE LICENSE IN");
        // "UNLICENSED" is a known license and goes on; a pointer to a file names none, and the classifiers may.
        if (!uppercased.starts_with("SEE LICENSE IN")) {
            license.expression = expressionOfName(*name);
            license.otherReading = otherReadingOf(uppercased);
            license.isPartlyUnknown = !license.expression && joinsKnownAndUnknown(*name);
        }
    }
    if (license.expression) {
        license.basis = LicenseBasis::metadata;
        return license;
    }
    if (const auto text = SPDX::expressionFromClassifiers(package.classifiers)) {
        license.expression = LicenseExpression::parse(*text);
        license.basis = license.expression ? LicenseBasis::classifier : LicenseBasis::none;
    }
    const bool saysSomething = package.declared && !Text::isBlank(*package.declared);
    license.isUnrecognized = !license.expression && (saysSomething || !package.classifiers.empty());
    return license;
}

}  // namespace ScanKit

#include "ScanKit/Identification/DeclaredLicense.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Support/Text.h"

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

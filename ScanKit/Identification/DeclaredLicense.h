#pragma once

#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Model/LicenseBasis.h"
#include "ScanKit/Model/RawDependency.h"

#include <optional>
#include <string>

namespace ScanKit {

/// The license that a package's metadata names.
struct DeclaredLicense {
    std::optional<LicenseExpression> expression;
    /// What else the name may stand for: "BSL" is the Boost license, and the Business Source License to whoever uses that.
    std::optional<LicenseExpression> otherReading;
    LicenseBasis basis = LicenseBasis::none;  ///< `metadata` or `classifier` when there is an expression
    /// "UNLICENSED", or "SEE LICENSE IN" a file: terms of the package's own.
    bool isCustom = false;
    /// The metadata says something, and it names no license that is known.
    bool isUnrecognized = false;
    /// Of licenses that all apply, as in "MIT AND JSON", at least one is unknown. A license file may hold the other alone.
    bool isPartlyUnknown = false;
};

/// Reads the declared text, then the classifiers. A text that is long or has several lines is a license pasted
/// into the metadata, and names none.
DeclaredLicense declaredLicense(const RawDependency& package);

/// The declared text when it can be the name of a license: there is one, on one line, below 151 characters.
/// Blank text counts as absent.
std::optional<std::string> declaredName(const RawDependency& package);

}  // namespace ScanKit

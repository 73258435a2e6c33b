#pragma once

#include "ScanKit/Identification/DeclaredLicense.h"
#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/TextReading.h"
#include "ScanKit/Model/LicenseBasis.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// Which license a package is under, and what there is to say about how that was found.
struct LicenseDecision {
    std::optional<LicenseExpression> chosen;  ///< absent when nothing decides
    LicenseBasis basis = LicenseBasis::none;
    std::optional<LicenseExpression> declared;  ///< what the metadata names
    std::optional<LicenseExpression>
        fromText;             ///< what the license files read as; absent when they do not count
    bool isMismatch = false;  ///< metadata and files name different licenses
    std::vector<std::string> extraLicenses;  ///< ids of further licenses in the files
    std::vector<std::string> unplacedParts;  ///< ids of licenses that parts of the files only resemble
    /// How the first file begins that says more than its licenses, where that is worth a note; terms come first.
    std::optional<std::string> remainder;
    bool isAltered = false;  ///< a file lacks the sentence in which its license grants its rights
    /// What the files say beyond their licenses needs to be read before anybody relies on the license.
    bool holdsUnreadTerms = false;
    std::optional<double> matchScore;     ///< the lowest of all matches
    std::optional<double> fullTextScore;  ///< the lowest of the full-text matches
};

/// Weighs what the metadata declares against the readings of the license files, which come in file order.
LicenseDecision decideLicense(const DeclaredLicense& declared,
                              const std::vector<std::shared_ptr<const TextReading>>& readings);

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace ScanKit {

/// The dependencies that every report holds under these options, in the order of the result.
std::vector<const Dependency*> reportedDependencies(const ScanResult& result, const ReportOptions& options);

/// The counts that the reports and the programs print.
struct ReportSummary {
    struct License {
        std::string name;  ///< "Unknown" for dependencies without a license
        LicenseCategory category = LicenseCategory::unknown;  ///< that of the first such dependency
        std::size_t count = 0;
        bool operator==(const License&) const = default;
    };

    std::size_t total = 0;
    std::map<Ecosystem, std::size_t> byEcosystem;       ///< without entries for ecosystems that have none
    std::map<LicenseCategory, std::size_t> byCategory;  ///< without entries for categories that have none
    std::size_t needsReview = 0;                        ///< with any flag but `noLicenseFile`
    std::size_t copyleft = 0;                           ///< of any copyleft category, weak included
    std::size_t unknownOrMissing = 0;  ///< without a license, or flagged `unknown` or `missing`
    std::vector<License> licenses;     ///< most frequent first, then by name in code-point order

    ReportSummary() = default;
    explicit ReportSummary(const std::vector<const Dependency*>& dependencies);

    bool operator==(const ReportSummary&) const = default;
};

}  // namespace ScanKit

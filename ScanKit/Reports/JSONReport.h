#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"
#include "ScanKit/Reports/ReportSummary.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::Exports {

/// What the JSON report says, apart from how it is written. Views and spans look into the result, which has
/// to outlive it. An absent field has no key in the document.
struct JSONReport {
    /// One reported package. The category is given by its label, basis and flags by their raw values.
    struct Item {
        std::string_view ecosystem, name, version;
        std::optional<std::string_view> license;
        std::string_view category, basis;
        std::optional<double> matchScore;
        std::vector<std::string_view> flags;
        bool devOnly = false;
        std::optional<std::string_view> declared;
        std::span<const std::string> licenseFiles;
        std::optional<std::string_view> source;
        std::span<const std::string> notes;

        explicit Item(const Dependency& dependency);
    };

    std::string project;
    Date generated;
    std::string generator;
    std::string_view disclaimer;
    std::span<const ScanSource> sources;
    std::vector<std::string_view> warnings;  ///< their sentences
    ReportSummary summary;
    std::vector<Item> dependencies;

    JSONReport(const ScanResult& result, const ReportOptions& options);

    /// The document: keys sorted at every level, no line feed at its end.
    std::string encoded() const;
};

}  // namespace ScanKit::Exports

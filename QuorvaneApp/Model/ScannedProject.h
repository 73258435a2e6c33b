#pragma once

#include "QuorvaneApp/Model/DependencyFilter.h"
#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/ScanResult.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What one scan brought, with all that searching and filtering it needs made ready in the background. Never
/// changed once made, so that the window and an export may read it at the same time.
class ScannedProject {
public:
    ScannedProject(ScanKit::Detection detection, ScanKit::ScanResult result);

    const ScanKit::Detection& detection() const { return detection_; }
    const ScanKit::ScanResult& result() const { return result_; }
    const std::vector<ScanKit::Dependency>& dependencies() const { return result_.dependencies; }

    /// The rows, as positions in the result and in its order, that pass the filter and hold the search text
    /// in their name or license, letter case aside. Spaces and tabs around the text do not count.
    std::vector<int> rows(const DependencyFilter& filter, std::string_view search) const;
    /// How many rows the filter passes.
    int count(const DependencyFilter& filter) const;
    /// The name in lower case.
    std::string_view foldedName(int row) const { return foldedNames_[static_cast<std::size_t>(row)]; }
    /// The first row with this id, or none.
    std::optional<int> rowOf(std::string_view id) const;

private:
    ScanKit::Detection detection_;
    ScanKit::ScanResult result_;
    std::vector<std::string> foldedNames_;
    std::vector<std::string> foldedLicenses_;
};

#pragma once

#include "QuorvaneApp/Model/DependencyFilter.h"
#include "QuorvaneApp/Model/DependencySearch.h"
#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/ScanResult.h"

#include <optional>
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

    /// The rows, as positions in the result and in its order, that pass the filter and that the search finds.
    std::vector<int> rows(const DependencyFilter& filter, const DependencySearch& search) const;
    /// How many rows the filter passes.
    int count(const DependencyFilter& filter) const;
    /// The name in lower case.
    std::string_view foldedName(int row) const { return searched_[static_cast<std::size_t>(row)].name; }
    /// The first row with this id, or none.
    std::optional<int> rowOf(std::string_view id) const;

private:
    ScanKit::Detection detection_;
    ScanKit::ScanResult result_;
    std::vector<SearchedTexts> searched_;  ///< of each dependency, in their order
};

#include "QuorvaneApp/Model/ScannedProject.h"

#include <algorithm>
#include <utility>

ScannedProject::ScannedProject(ScanKit::Detection detection, ScanKit::ScanResult result)
    : detection_(std::move(detection)), result_(std::move(result)) {
    searched_.reserve(dependencies().size());
    for (const ScanKit::Dependency& dependency : dependencies()) {
        searched_.push_back(SearchedTexts::of(dependency));
    }
}

std::vector<int> ScannedProject::rows(const DependencyFilter& filter, const DependencySearch& search) const {
    std::vector<int> rows;
    for (std::size_t i = 0; i < dependencies().size(); ++i) {
        if (search.finds(searched_[i]) && filter.passes(dependencies()[i])) {
            rows.push_back(static_cast<int>(i));
        }
    }
    return rows;
}

int ScannedProject::count(const DependencyFilter& filter) const {
    return static_cast<int>(std::ranges::count_if(
        dependencies(), [&](const ScanKit::Dependency& dependency) { return filter.passes(dependency); }));
}

std::optional<int> ScannedProject::rowOf(std::string_view id) const {
    const auto found = std::ranges::find_if(
        dependencies(), [&](const ScanKit::Dependency& dependency) { return dependency.id() == id; });
    if (found == dependencies().end()) {
        return std::nullopt;
    }
    return static_cast<int>(found - dependencies().begin());
}

#include "QuorvaneApp/Model/ScannedProject.h"

#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

ScannedProject::ScannedProject(ScanKit::Detection detection, ScanKit::ScanResult result)
    : detection_(std::move(detection)), result_(std::move(result)) {
    foldedNames_.reserve(dependencies().size());
    foldedLicenses_.reserve(dependencies().size());
    for (const ScanKit::Dependency& dependency : dependencies()) {
        foldedNames_.push_back(ScanKit::Text::lowercased(dependency.name));
        foldedLicenses_.push_back(ScanKit::Text::lowercased(dependency.license.value_or("")));
    }
}

std::vector<int> ScannedProject::rows(const DependencyFilter& filter, std::string_view search) const {
    const std::string query = ScanKit::Text::lowercased(ScanKit::Text::trimmedOfBlanks(search));
    std::vector<int> rows;
    for (std::size_t i = 0; i < dependencies().size(); ++i) {
        const bool found = query.empty() || foldedNames_[i].find(query) != std::string::npos ||
                           foldedLicenses_[i].find(query) != std::string::npos;
        if (found && filter.passes(dependencies()[i])) {
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

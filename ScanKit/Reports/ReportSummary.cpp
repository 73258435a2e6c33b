#include "ScanKit/Reports/ReportSummary.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace ScanKit {
namespace {

std::vector<ReportSummary::License> licensesOf(const std::vector<const Dependency*>& dependencies) {
    std::vector<ReportSummary::License> licenses;
    std::unordered_map<std::string_view, std::size_t> places;
    for (const Dependency* dependency : dependencies) {
        // One line for all packages of which nothing is known, under a word that no license has for a name.
        const std::string_view name =
            dependency->license ? std::string_view(*dependency->license) : std::string_view("Unknown");
        const auto [place, isNew] = places.try_emplace(name, licenses.size());
        if (isNew) {
            licenses.push_back({.name = std::string(name), .category = dependency->category});
        }
        ++licenses[place->second].count;
    }
    // Bytes of UTF-8 compare as code points do.
    std::ranges::sort(licenses, [](const auto& a, const auto& b) {
        return std::tie(b.count, a.name) < std::tie(a.count, b.name);
    });
    return licenses;
}

}  // namespace

std::vector<const Dependency*> reportedDependencies(const ScanResult& result, const ReportOptions& options) {
    return result.selected(options.includeDev);
}

ReportSummary::ReportSummary(const std::vector<const Dependency*>& dependencies)
    : total(dependencies.size()), licenses(licensesOf(dependencies)) {
    for (const Dependency* dependency : dependencies) {
        ++byEcosystem[dependency->ecosystem];
        ++byCategory[dependency->category];
        needsReview += dependency->needsReview() ? 1 : 0;
        copyleft += isCopyleft(dependency->category) ? 1 : 0;
        unknownOrMissing += dependency->isUnknownOrMissing() ? 1 : 0;
    }
}

}  // namespace ScanKit

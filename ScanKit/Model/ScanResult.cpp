#include "ScanKit/Model/ScanResult.h"

namespace ScanKit {

std::vector<const Dependency*> ScanResult::selected(
    bool includeDev, const std::optional<std::set<Ecosystem>>& ecosystems) const& {
    std::vector<const Dependency*> kept;
    kept.reserve(dependencies.size());
    for (const Dependency& dependency : dependencies) {
        const bool wanted = !ecosystems || ecosystems->contains(dependency.ecosystem);
        if (wanted && (includeDev || !dependency.isDev)) {
            kept.push_back(&dependency);
        }
    }
    return kept;
}

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/Dependency.h"
#include "ScanKit/Model/ScanSource.h"
#include "ScanKit/Model/ScanWarning.h"
#include "ScanKit/Support/Dates.h"

#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace ScanKit {

/// All that one scan found.
struct ScanResult {
    std::string projectName;               ///< last path component of the scanned folder
    std::string rootPath;                  ///< full path of the scanned folder
    Date scannedAt{};                      ///< when the scan started
    std::vector<ScanSource> sources;       ///< in the order in which they were read
    std::vector<Dependency> dependencies;  ///< by ecosystem, lower-cased name, version
    std::vector<ScanWarning> warnings;     ///< in the order raised

    /// The dependencies, in their order, without dev-only ones unless `includeDev`, and of the given ecosystems
    /// alone. No set keeps all ecosystems; an empty set keeps none. The pointers live as long as this result
    /// is unchanged; a result that nobody keeps has nothing to point into, so that asking it does not compile.
    std::vector<const Dependency*> selected(bool includeDev,
                                            const std::optional<std::set<Ecosystem>>& ecosystems = {}) const&;
    std::vector<const Dependency*> selected(
        bool includeDev, const std::optional<std::set<Ecosystem>>& ecosystems = {}) const&& = delete;

    bool operator==(const ScanResult&) const = default;
    auto fields() const {
        return std::tie(projectName, rootPath, scannedAt, sources, dependencies, warnings);
    }
};

}  // namespace ScanKit

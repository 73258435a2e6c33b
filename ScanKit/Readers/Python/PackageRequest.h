#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// One package that a package or the project asks for. Names of packages and extras are normalized.
struct PackageRequest {
    std::string name;
    std::vector<std::string> extras = {};
    std::optional<std::string> version = {};  ///< present when exactly one is asked for
    bool isConditional = false;               ///< asked for in some environments only

    bool operator==(const PackageRequest&) const = default;
};

/// What a text like "name[extra] (>=1,<2); marker" asks for; absent when it names no package.
std::optional<PackageRequest> packageRequest(std::string_view text);

/// Several conditional requests of one list for one package are the versions for this environment and that: one of them
/// always holds, so none counts as conditional.
std::vector<PackageRequest> withAlternativesNeeded(std::vector<PackageRequest> requests);

}  // namespace ScanKit::PythonParser

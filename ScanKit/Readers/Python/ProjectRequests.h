#pragma once

#include "ScanKit/Readers/Python/PackageRequest.h"
#include "ScanKit/Support/DataValue.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// What a project asks for itself. What is asked for in some environments only may be missing, wherever it stands.
struct ProjectRequests {
    std::vector<PackageRequest> shipped;
    std::vector<PackageRequest> shippedIfPresent;  ///< behind an extra of the project
    std::vector<PackageRequest> development;
    std::set<std::string> developmentGroups;  ///< their normalized names

    bool operator==(const ProjectRequests&) const = default;
};

/// What pyproject.toml says in the tables of the standard, of Poetry and of PDM. Absent when there is no such text, it cannot
/// be read, or it leaves to others what the project depends on.
std::optional<ProjectRequests> projectRequests(const std::optional<std::string>& pyproject);

/// The elements of a list; none when there is none.
const std::vector<DataValue>& elementsOf(const DataValue* list);
/// The texts of a list; what is no text is passed over, and no list is an empty one.
std::vector<std::string_view> textsOf(const DataValue* list);

/// What a list of texts in the standard's notation asks for.
std::vector<PackageRequest> requestsOfTexts(const DataValue* list);

/// One dependency in Poetry's notation.
struct PoetryDependency {
    std::vector<PackageRequest> requests;  ///< several where the environment decides on the version
    bool isOptional = false;               ///< behind an extra
};
PoetryDependency poetryDependency(std::string_view name, const DataValue& value);

}  // namespace ScanKit::PythonParser

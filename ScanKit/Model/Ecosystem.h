#pragma once

#include "ScanKit/Model/EnumerationTable.h"

#include <optional>
#include <string_view>

namespace ScanKit {

/// The kinds of packages that a scan reads. The order is meaningful: results are sorted by it first.
enum class Ecosystem { swiftpm, npm, python };

inline constexpr auto allEcosystems = enumerators<Ecosystem>();

/// The short name that machine-readable output uses: "swiftpm", "npm", "python".
std::string_view rawValue(Ecosystem ecosystem);
/// The name that people read: "Swift packages", "npm", "Python".
std::string_view label(Ecosystem ecosystem);
/// The name in the CSV and in the PDF's list of what was read: "SwiftPM", "npm", "Python".
std::string_view shortLabel(Ecosystem ecosystem);
/// The ecosystem with exactly this raw value, or none.
std::optional<Ecosystem> ecosystemFromRawValue(std::string_view rawValue);

}  // namespace ScanKit

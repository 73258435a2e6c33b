#pragma once

#include "ScanKit/Model/EnumerationTable.h"

#include <optional>
#include <string_view>

namespace ScanKit {

/// How much a license asks of those who use the package. The order is meaningful: later is more restrictive,
/// and `unknown`, about which nothing can be said, comes last.
enum class LicenseCategory {
    publicDomain,
    permissive,
    weakCopyleft,
    strongCopyleft,
    networkCopyleft,
    proprietary,
    unknown,
};

inline constexpr auto allLicenseCategories = enumerators<LicenseCategory>();

/// The short name that machine-readable output uses, such as "weakCopyleft".
std::string_view rawValue(LicenseCategory category);
/// The words that people read, such as "Weak copyleft"; `strongCopyleft` reads "Copyleft".
std::string_view label(LicenseCategory category);
/// The category with exactly this raw value, or none.
std::optional<LicenseCategory> licenseCategoryFromRawValue(std::string_view rawValue);

/// True for weak, strong and network copyleft.
constexpr bool isCopyleft(LicenseCategory category) {
    return category == LicenseCategory::weakCopyleft || category == LicenseCategory::strongCopyleft ||
           category == LicenseCategory::networkCopyleft;
}

}  // namespace ScanKit

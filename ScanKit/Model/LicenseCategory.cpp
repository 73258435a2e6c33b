#include "ScanKit/Model/LicenseCategory.h"

#include "ScanKit/Model/EnumerationTable.h"

namespace ScanKit {
namespace {

struct LicenseCategoryRow {
    LicenseCategory value;
    std::string_view rawValue, label;
};
constexpr std::array<LicenseCategoryRow, 7> rows{{
    {LicenseCategory::publicDomain, "publicDomain", "Public domain"},
    {LicenseCategory::permissive, "permissive", "Permissive"},
    {LicenseCategory::weakCopyleft, "weakCopyleft", "Weak copyleft"},
    {LicenseCategory::strongCopyleft, "strongCopyleft", "Copyleft"},
    {LicenseCategory::networkCopyleft, "networkCopyleft", "Network copyleft"},
    {LicenseCategory::proprietary, "proprietary", "Not open source"},
    {LicenseCategory::unknown, "unknown", "Unknown"},
}};
static_assert(inDeclaredOrder(rows));
static_assert(valuesOf(rows) == allLicenseCategories);

}  // namespace

std::string_view rawValue(LicenseCategory category) {
    return rowOf(rows, category).rawValue;
}

std::string_view label(LicenseCategory category) {
    return rowOf(rows, category).label;
}

std::optional<LicenseCategory> licenseCategoryFromRawValue(std::string_view rawValue) {
    return valueOf(rows, rawValue);
}

}  // namespace ScanKit

#include "ScanKit/Model/LicenseCategory.h"

#include <array>

namespace ScanKit {
namespace {

struct LicenseCategoryRow {
    LicenseCategory value;
    std::string_view rawValue, label;
};
constexpr auto rows = std::to_array<LicenseCategoryRow>({
    {LicenseCategory::publicDomain, "publicDomain", "Public domain"},
    {LicenseCategory::permissive, "permissive", "Permissive"},
    {LicenseCategory::weakCopyleft, "weakCopyleft", "Weak copyleft"},
    {LicenseCategory::strongCopyleft, "strongCopyleft", "Copyleft"},
    {LicenseCategory::networkCopyleft, "networkCopyleft", "Network copyleft"},
    {LicenseCategory::proprietary, "proprietary", "Not open source"},
    {LicenseCategory::unknown, "unknown", "Unknown"},
});
static_assert(hasRowForEachEnumerator(rows), "each enumerator needs its row here");

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

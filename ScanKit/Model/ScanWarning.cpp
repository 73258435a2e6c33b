#include "ScanKit/Model/ScanWarning.h"

#include "ScanKit/Model/EnumerationTable.h"

#include <array>

namespace ScanKit {
namespace {

struct KindRow {
    ScanWarning::Kind value;
    std::string_view rawValue;
};
using enum ScanWarning::Kind;
constexpr auto rows = std::to_array<KindRow>({
    {dependencyFileUnreadable, "dependencyFileUnreadable"},
    {swiftPackagesNotCheckedOut, "swiftPackagesNotCheckedOut"},
    {npmModulesMissing, "npmModulesMissing"},
    {npmPackagesNotListed, "npmPackagesNotListed"},
    {pythonEnvironmentMissing, "pythonEnvironmentMissing"},
    {entriesUnreadable, "entriesUnreadable"},
    {packagesNotRead, "packagesNotRead"},
    {swiftPackagesNotResolved, "swiftPackagesNotResolved"},
    {lockfileIsBinary, "lockfileIsBinary"},
    {lockfileSetAside, "lockfileSetAside"},
});
static_assert(hasRowForEachEnumerator(rows), "each enumerator needs its row here");

}  // namespace

std::string_view rawValue(ScanWarning::Kind kind) {
    return rowOf(rows, kind).rawValue;
}

std::optional<ScanWarning::Kind> warningKindFromRawValue(std::string_view rawValue) {
    return valueOf(rows, rawValue);
}

}  // namespace ScanKit

#include "QuorvaneApp/Model/WarningRemedy.h"

#include "ScanKit/Model/EnumerationTable.h"

#include <array>

namespace {

using Kind = ScanKit::ScanWarning::Kind;

struct RemedyRow {
    Kind value;
    WarningRemedy remedy;
};

constexpr auto remedyRows = std::to_array<RemedyRow>({
    {Kind::dependencyFileUnreadable, WarningRemedy::rescan},
    {Kind::swiftPackagesNotCheckedOut, WarningRemedy::addCheckouts},
    {Kind::npmModulesMissing, WarningRemedy::rescan},
    {Kind::npmPackagesNotListed, WarningRemedy::rescan},
    {Kind::pythonEnvironmentMissing, WarningRemedy::choosePythonEnvironment},
    {Kind::entriesUnreadable, WarningRemedy::rescan},
    {Kind::packagesNotRead, WarningRemedy::none},
    {Kind::swiftPackagesNotResolved, WarningRemedy::rescan},
    {Kind::lockfileIsBinary, WarningRemedy::rescan},
    {Kind::lockfileSetAside, WarningRemedy::rescan},
});
static_assert(ScanKit::hasRowForEachEnumerator(remedyRows), "each enumerator needs its row here");

}  // namespace

WarningRemedy remedyOf(ScanKit::ScanWarning::Kind warning) {
    return ScanKit::rowOf(remedyRows, warning).remedy;
}

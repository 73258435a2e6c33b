#include "ScanKit/Model/Detection.h"

#include <algorithm>
#include <array>
#include <optional>

namespace ScanKit {
namespace {

using Paths = std::vector<std::filesystem::path>;

/// For each list of paths, the ecosystem that the project uses when the list is not empty; none for lists that
/// only help to read another's packages.
struct ListRow {
    Paths Detection::*list;
    std::optional<Ecosystem> standsFor;
};
constexpr auto listRows = std::to_array<ListRow>({
    {&Detection::resolvedFiles, Ecosystem::swiftpm},
    {&Detection::checkoutFolders, std::nullopt},
    {&Detection::npmLockfiles, Ecosystem::npm},
    {&Detection::npmModulesWithoutLock, Ecosystem::npm},
    {&Detection::npmManifestsOnly, Ecosystem::npm},
    {&Detection::requirementFiles, Ecosystem::python},
    {&Detection::poetryLocks, Ecosystem::python},
    {&Detection::virtualEnvs, Ecosystem::python},
    {&Detection::pnpmLocks, Ecosystem::npm},
    {&Detection::yarnLocks, Ecosystem::npm},
    {&Detection::bunLocks, Ecosystem::npm},
    {&Detection::bunBinaryLocks, Ecosystem::npm},
    {&Detection::uvLocks, Ecosystem::python},
    {&Detection::pdmLocks, Ecosystem::python},
    {&Detection::pipfileLocks, Ecosystem::python},
    {&Detection::pyLocks, Ecosystem::python},
    {&Detection::swiftManifestsOnly, std::nullopt},
    {&Detection::foreignFiles, std::nullopt},
});
/// All members of the record are vectors, of one size whatever they hold: beside the lists of paths there is the
/// list of project names. A list without a row would make a project that has nothing else look empty.
static_assert(sizeof(Detection) == (listRows.size() + 1) * sizeof(Paths),
              "each list of Detection needs its row");
static_assert(std::tuple_size_v<decltype(Detection().fields())> == listRows.size() + 1,
              "each list of Detection belongs into fields()");

consteval bool isFoundBySomeList(Ecosystem ecosystem) {
    return std::ranges::any_of(listRows, [&](const ListRow& row) { return row.standsFor == ecosystem; });
}
static_assert(std::ranges::all_of(allEcosystems, isFoundBySomeList),
              "each ecosystem needs a list that stands for it");

}  // namespace

std::vector<Ecosystem> Detection::ecosystems() const {
    std::vector<Ecosystem> found;
    for (const Ecosystem ecosystem : allEcosystems) {
        const bool isThere = std::ranges::any_of(listRows, [&](const ListRow& row) {
            return row.standsFor == ecosystem && !(this->*row.list).empty();
        });
        if (isThere) {
            found.push_back(ecosystem);
        }
    }
    return found;
}

std::set<Ecosystem> Detection::ecosystemsToRead(const Paths& chosenEnvironments) const {
    const std::vector<Ecosystem> found = ecosystems();
    std::set<Ecosystem> read(found.begin(), found.end());
    if (!chosenEnvironments.empty()) {
        read.insert(Ecosystem::python);
    }
    return read;
}

}  // namespace ScanKit

#include "ScanKit/Model/Ecosystem.h"

#include <array>

namespace ScanKit {
namespace {

struct EcosystemRow {
    Ecosystem value;
    std::string_view rawValue, label, shortLabel;
};
constexpr auto rows = std::to_array<EcosystemRow>({
    {Ecosystem::swiftpm, "swiftpm", "Swift packages", "SwiftPM"},
    {Ecosystem::npm, "npm", "npm", "npm"},
    {Ecosystem::python, "python", "Python", "Python"},
});
static_assert(hasRowForEachEnumerator(rows), "each enumerator needs its row here");

}  // namespace

std::string_view rawValue(Ecosystem ecosystem) {
    return rowOf(rows, ecosystem).rawValue;
}

std::string_view label(Ecosystem ecosystem) {
    return rowOf(rows, ecosystem).label;
}

std::string_view shortLabel(Ecosystem ecosystem) {
    return rowOf(rows, ecosystem).shortLabel;
}

std::optional<Ecosystem> ecosystemFromRawValue(std::string_view rawValue) {
    return valueOf(rows, rawValue);
}

}  // namespace ScanKit

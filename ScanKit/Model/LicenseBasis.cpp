#include "ScanKit/Model/LicenseBasis.h"

#include <array>

namespace ScanKit {
namespace {

struct LicenseBasisRow {
    LicenseBasis value;
    std::string_view rawValue, label, shortLabel;
};
constexpr auto rows = std::to_array<LicenseBasisRow>({
    {LicenseBasis::metadataAndText, "metadataAndText", "Metadata and license file", "Metadata + file"},
    {LicenseBasis::metadata, "metadata", "Package metadata", "Metadata"},
    {LicenseBasis::classifier, "classifier", "Python classifier", "Classifier"},
    {LicenseBasis::text, "text", "License file", "License file"},
    {LicenseBasis::notice, "notice", "License notice", "Notice"},
    {LicenseBasis::none, "none", "Not found", "—"},
});
static_assert(hasRowForEachEnumerator(rows), "each enumerator needs its row here");

}  // namespace

std::string_view rawValue(LicenseBasis basis) {
    return rowOf(rows, basis).rawValue;
}

std::string_view label(LicenseBasis basis) {
    return rowOf(rows, basis).label;
}

std::string_view shortLabel(LicenseBasis basis) {
    return rowOf(rows, basis).shortLabel;
}

std::optional<LicenseBasis> licenseBasisFromRawValue(std::string_view rawValue) {
    return valueOf(rows, rawValue);
}

}  // namespace ScanKit

#include "ScanKit/Model/Flag.h"

namespace ScanKit {
namespace {

struct FlagRow {
    Flag::Case value;
    std::string_view rawValue, label;
    Flag::Severity severity;
};
using enum Flag::Severity;
constexpr auto rows = std::to_array<FlagRow>({
    {Flag::networkCopyleft, "networkCopyleft", "Network copyleft (AGPL)", high},
    {Flag::strongCopyleft, "strongCopyleft", "Copyleft (GPL)", high},
    {Flag::proprietary, "proprietary", "Not open source", high},
    {Flag::missing, "missing", "No license found", high},
    {Flag::unknown, "unknown", "Unrecognized license", medium},
    {Flag::mismatch, "mismatch", "Metadata and file disagree", medium},
    {Flag::weakCopyleft, "weakCopyleft", "Weak copyleft", medium},
    {Flag::notOnDisk, "notOnDisk", "Not on this Mac", medium},
    {Flag::noLicenseFile, "noLicenseFile", "No license file", low},
});
static_assert(hasRowForEachEnumerator(rows), "each enumerator needs its row here");

}  // namespace

std::optional<Flag::Severity> Flag::severityFromRawValue(int rawValue) {
    if (rawValue < 0 || rawValue > 2) {
        return std::nullopt;
    }
    return static_cast<Severity>(rawValue);
}

std::string_view rawValue(Flag flag) {
    return rows[flag.position()].rawValue;
}

std::string_view label(Flag flag) {
    return rows[flag.position()].label;
}

Flag::Severity severity(Flag flag) {
    return rows[flag.position()].severity;
}

std::optional<Flag> flagFromRawValue(std::string_view rawValue) {
    return valueOf(rows, rawValue);
}

}  // namespace ScanKit

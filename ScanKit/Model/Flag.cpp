#include "ScanKit/Model/Flag.h"

namespace ScanKit {
namespace {

struct FlagRow {
    Flag value;
    std::string_view rawValue, label;
    Flag::Severity severity;
};
using enum Flag::Severity;
constexpr std::array<FlagRow, 9> rows{{
    {Flag::networkCopyleft, "networkCopyleft", "Network copyleft (AGPL)", high},
    {Flag::strongCopyleft, "strongCopyleft", "Copyleft (GPL)", high},
    {Flag::proprietary, "proprietary", "Not open source", high},
    {Flag::missing, "missing", "No license found", high},
    {Flag::unknown, "unknown", "Unrecognized license", medium},
    {Flag::mismatch, "mismatch", "Metadata and file disagree", medium},
    {Flag::weakCopyleft, "weakCopyleft", "Weak copyleft", medium},
    {Flag::notOnDisk, "notOnDisk", "Not on this Mac", medium},
    {Flag::noLicenseFile, "noLicenseFile", "No license file", low},
}};

constexpr bool rowsInDeclaredOrder() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].value != static_cast<Flag::Case>(i) || allFlags[i] != rows[i].value) {
            return false;
        }
    }
    return true;
}
static_assert(rowsInDeclaredOrder());

}  // namespace

std::optional<Flag::Severity> Flag::severityFromRawValue(int rawValue) {
    if (rawValue < 0 || rawValue > 2) {
        return std::nullopt;
    }
    return static_cast<Severity>(rawValue);
}

std::string_view rawValue(Flag flag) {
    return rows[static_cast<std::size_t>(flag)].rawValue;
}

std::string_view label(Flag flag) {
    return rows[static_cast<std::size_t>(flag)].label;
}

Flag::Severity severity(Flag flag) {
    return rows[static_cast<std::size_t>(flag)].severity;
}

std::optional<Flag> flagFromRawValue(std::string_view rawValue) {
    for (const FlagRow& row : rows) {
        if (row.rawValue == rawValue) {
            return row.value;
        }
    }
    return std::nullopt;
}

}  // namespace ScanKit

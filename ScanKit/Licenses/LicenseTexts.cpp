#include "ScanKit/Licenses/LicenseTexts.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

struct Row {
    std::string_view name, text;
};

constexpr auto standardTexts = std::to_array<Row>({
#include "standardTable.inc"
});
constexpr auto referenceTexts = std::to_array<Row>({
#include "referenceTable.inc"
});

std::optional<std::string_view> textOf(const auto& rows, std::string_view name) {
    const auto row = std::ranges::find(rows, name, &Row::name);
    return row == rows.end() ? std::nullopt : std::optional(row->text);
}

}  // namespace

std::optional<std::string_view> standardText(std::string_view name) {
    return textOf(standardTexts, name);
}

std::optional<std::string_view> referenceText(std::string_view name) {
    return textOf(referenceTexts, name);
}

}  // namespace ScanKit

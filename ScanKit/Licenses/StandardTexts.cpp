#include "ScanKit/Licenses/StandardTexts.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

struct StandardTextRow {
    std::string_view name;
    std::string_view text;
};

#include "StandardTextsTable.inc"

}  // namespace

std::optional<std::string_view> standardText(std::string_view name) {
    const auto row = std::ranges::find(standardTextRows, name, &StandardTextRow::name);
    if (row == standardTextRows.end()) {
        return std::nullopt;
    }
    return row->text;
}

}  // namespace ScanKit

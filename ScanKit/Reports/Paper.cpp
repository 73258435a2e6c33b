#include "ScanKit/Reports/Paper.h"

#include "ScanKit/Model/EnumerationTable.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace ScanKit {
namespace {

struct PaperRow {
    Paper value;
    std::string_view rawValue;
};
constexpr auto rows = std::to_array<PaperRow>({{Paper::letter, "letter"}, {Paper::a4, "a4"}});
static_assert(hasRowForEachEnumerator(rows), "each paper needs its row here");

/// All others print on A4.
constexpr auto letterTerritories = std::to_array<std::string_view>(
    {"BZ", "CA", "CL", "CO", "CR", "GT", "MX", "NI", "PA", "PH", "PR", "SV", "US", "VE"});

}  // namespace

std::string_view rawValue(Paper paper) {
    return rowOf(rows, paper).rawValue;
}

std::optional<Paper> paperFromRawValue(std::string_view rawValue) {
    const auto* const row = std::ranges::find(rows, rawValue, &PaperRow::rawValue);
    return row == rows.end() ? std::nullopt : std::optional(row->value);
}

Paper paperOfLocale(std::string_view name) {
    const std::size_t underscore = name.find('_');
    const std::string_view territory =
        underscore == std::string_view::npos ? "" : name.substr(underscore + 1, 2);
    return territory.empty() || std::ranges::find(letterTerritories, territory) != letterTerritories.end()
               ? Paper::letter
               : Paper::a4;
}

Paper paperOfEnvironment() {
    for (const char* variable : {"LC_ALL", "LC_PAPER", "LANG"}) {
        if (const char* name = std::getenv(variable); name != nullptr && *name != '\0') {
            return paperOfLocale(name);
        }
    }
    return Paper::letter;
}

}  // namespace ScanKit

#include "ScanKit/Model/ScanSource.h"

#include <array>
#include <string_view>

namespace ScanKit {
namespace {

struct StateRow {
    std::size_t EntryStates::*count;
    std::string_view words;
};
constexpr auto rows = std::to_array<StateRow>({
    {&EntryStates::listed, "listed"},
    {&EntryStates::listedAlready, "listed already"},
    {&EntryStates::notInstalled, "optional and not installed"},
    {&EntryStates::own, "the project's own"},
    {&EntryStates::unreadable, "unreadable"},
});
static_assert(sizeof(EntryStates) == rows.size() * sizeof(std::size_t), "each state needs its row");

}  // namespace

std::string inWords(const EntryStates& states) {
    const std::size_t total = states.total();
    std::string text = std::to_string(total) + (total == 1 ? " entry" : " entries");
    if (states.listed == total) {
        return text;
    }
    std::string_view separator = ": ";
    for (const StateRow& row : rows) {
        if (states.*row.count > 0) {
            text += separator;
            text += std::to_string(states.*row.count) + " " + std::string(row.words);
            separator = ", ";
        }
    }
    return text;
}

}  // namespace ScanKit

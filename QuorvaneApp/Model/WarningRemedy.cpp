#include "QuorvaneApp/Model/WarningRemedy.h"

#include <array>

namespace {

struct RemedyRow {
    std::string_view phrase;
    WarningRemedy remedy;
};

/// What the library's sentences ask for. Whatever else a warning names is mended outside, and then scanned again.
constexpr std::array<RemedyRow, 2> remedyRows{{
    {"add the checkouts folder", WarningRemedy::addCheckouts},
    {"Choose the environment", WarningRemedy::choosePythonEnvironment},
}};

}  // namespace

WarningRemedy remedyOf(std::string_view warning) {
    for (const RemedyRow& row : remedyRows) {
        if (warning.find(row.phrase) != std::string_view::npos) {
            return row.remedy;
        }
    }
    return WarningRemedy::rescan;
}

#include "QuorvaneApp/Updates/ProbeOutcome.h"

#include <array>

namespace {

struct StatusRow {
    int first;
    int last;
    ProbeOutcome outcome;
};

constexpr std::array<StatusRow, 5> statusRows{{
    {200, 299, ProbeOutcome::reachable},
    {404, 404, ProbeOutcome::upToDate},
    {405, 405, ProbeOutcome::reachable},  // the server refuses HEAD
    {410, 410, ProbeOutcome::upToDate},
    {501, 501, ProbeOutcome::reachable},  // the server does not know HEAD
}};

}  // namespace

ProbeOutcome classify(std::optional<int> status) {
    for (const StatusRow& row : statusRows) {
        if (status && *status >= row.first && *status <= row.last) {
            return row.outcome;
        }
    }
    return ProbeOutcome::failed;
}

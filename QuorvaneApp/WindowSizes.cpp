#include "QuorvaneApp/WindowSizes.h"

namespace {

/// Room for filters, table and details beside each other.
constexpr QSize firstSize{1280, 800};
constexpr QSize leastSize{800, 500};

}  // namespace

WindowSizes WindowSizes::fitting(const QSize& available) {
    const QSize room(available.width() * 19 / 20, available.height() * 9 / 10);
    return {.least = leastSize.boundedTo(room), .first = firstSize.boundedTo(room)};
}

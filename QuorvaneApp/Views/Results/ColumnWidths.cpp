#include "QuorvaneApp/Views/Results/ColumnWidths.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include <QByteArrayList>

namespace ColumnWidths {
namespace {

/// The widths when a column of weight 1 may take `part`.
std::vector<int> cutTo(const std::vector<Need>& needs, int part) {
    std::vector<int> widths;
    for (const Need& need : needs) {
        const int wanted = std::max(need.content, need.least);
        widths.push_back(need.chosen.value_or(std::clamp(part * need.weight, need.least, wanted)));
    }
    return widths;
}

int sumOf(const std::vector<int>& widths) {
    return std::accumulate(widths.begin(), widths.end(), 0);
}

/// Gives each column that was not chosen its part of what is left; the last of them gets the remainder.
void widen(std::vector<int>& widths, const std::vector<Need>& needs, int left) {
    int weights = 0;
    for (const Need& need : needs) {
        weights += need.chosen ? 0 : need.weight;
    }
    for (std::size_t i = 0; i < needs.size() && weights > 0; ++i) {
        if (!needs[i].chosen) {
            const int part = left * needs[i].weight / weights;
            widths[i] += part;
            left -= part;
            weights -= needs[i].weight;
        }
    }
}

}  // namespace

int least(const std::vector<Need>& needs) {
    return sumOf(cutTo(needs, 0));
}

std::vector<int> shared(const std::vector<Need>& needs, int available) {
    // The greatest part with which all fit: halving finds it among all widths there are.
    int fits = 0;
    int tooMuch = std::max(available, 0) + 1;
    while (tooMuch - fits > 1) {
        const int part = fits + (tooMuch - fits) / 2;
        (sumOf(cutTo(needs, part)) <= available ? fits : tooMuch) = part;
    }
    std::vector<int> widths = cutTo(needs, fits);
    widen(widths, needs, std::max(available - sumOf(widths), 0));
    return widths;
}

QByteArray toBytes(const std::vector<std::optional<int>>& chosen) {
    QByteArrayList numbers;
    for (const std::optional<int>& width : chosen) {
        numbers.push_back(QByteArray::number(width.value_or(0)));
    }
    return numbers.join(',');
}

std::vector<std::optional<int>> chosenFrom(const QByteArray& remembered, std::size_t columns) {
    std::vector<std::optional<int>> chosen(columns);
    const QList<QByteArray> numbers = remembered.split(',');
    for (std::size_t i = 0; i < columns && i < static_cast<std::size_t>(numbers.size()); ++i) {
        const int width = numbers[static_cast<qsizetype>(i)].toInt();
        chosen[i] = width > 0 ? std::optional(width) : std::nullopt;
    }
    return chosen;
}

}  // namespace ColumnWidths

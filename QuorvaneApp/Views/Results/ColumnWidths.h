#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QByteArray>

/// How wide the columns of a table are, decided apart from any widget. All widths are in pixels.
namespace ColumnWidths {

struct Need {
    int content = 0;                 ///< shows its longest text whole
    int least = 0;                   ///< below this it says nothing
    int weight = 1;                  ///< its part of what is left, and of what is short
    std::optional<int> chosen = {};  ///< by the user: then nothing changes it
};

/// The sum of the widths below which nothing is cut.
int least(const std::vector<Need>& needs);

/// The widths of the columns in their order. What is left beyond their contents is shared by weight; where it
/// is short, columns that ask for less than their part get what they ask for, and the others share the rest.
/// The sum is `available`, unless what was chosen and the least widths make it more, or leave nothing to widen.
std::vector<int> shared(const std::vector<Need>& needs, int available);

/// What the user chose, as it is remembered between launches: one number a column, 0 for one never touched.
QByteArray toBytes(const std::vector<std::optional<int>>& chosen);
/// The same read back, for so many columns; whatever cannot be read was not chosen.
std::vector<std::optional<int>> chosenFrom(const QByteArray& remembered, std::size_t columns);

}  // namespace ColumnWidths

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace ScanKit {

/// Each enumeration of the model is described by one table whose row i belongs to enumerator i. Raw values,
/// labels, parsing and `allCases` all read that table; a row in the wrong place does not compile.
template <typename Row, std::size_t count>
constexpr bool inDeclaredOrder(const std::array<Row, count>& rows) {
    for (std::size_t i = 0; i < count; ++i) {
        if (static_cast<std::size_t>(rows[i].value) != i) {
            return false;
        }
    }
    return true;
}

template <typename Row, std::size_t count, typename Value>
constexpr const Row& rowOf(const std::array<Row, count>& rows, Value value) {
    return rows[static_cast<std::size_t>(value)];
}

/// The enumerator with exactly this raw value (case-sensitive), or none.
template <typename Row, std::size_t count>
constexpr auto valueOf(const std::array<Row, count>& rows, std::string_view rawValue)
    -> std::optional<decltype(Row::value)> {
    for (const Row& row : rows) {
        if (row.rawValue == rawValue) {
            return row.value;
        }
    }
    return std::nullopt;
}

template <typename Row, std::size_t count>
constexpr auto valuesOf(const std::array<Row, count>& rows) {
    std::array<decltype(Row::value), count> values{};
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = rows[i].value;
    }
    return values;
}

}  // namespace ScanKit

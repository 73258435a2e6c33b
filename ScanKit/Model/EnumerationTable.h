#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// Each enumeration is described by tables whose row i belongs to enumerator i. Raw values, labels and parsing read
/// such a table; a row that is missing or in the wrong place does not compile. Enumerators count from 0 without gaps.
namespace ScanKit {

/// Whether the value has a name of its own. The compiler spells it out in the name of this function: an enumerator by
/// its name, "Ecosystem::npm", any other value as a cast, "(Ecosystem)7".
template <auto value>
consteval bool isEnumerator() {
    const std::string_view spelled = __PRETTY_FUNCTION__;
    const char behindParenthesis = spelled[spelled.rfind(')') + 1];
    return behindParenthesis < '0' || behindParenthesis > '9';
}

/// How many enumerators there are. This language has no other way to learn of one that was added.
template <typename Value, std::size_t count = 0>
consteval std::size_t enumeratorCount() {
    if constexpr (isEnumerator<static_cast<Value>(count)>()) {
        return enumeratorCount<Value, count + 1>();
    } else {
        return count;
    }
}

/// All enumerators in the declared order.
template <typename Value>
consteval auto enumerators() {
    std::array<Value, enumeratorCount<Value>()> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = static_cast<Value>(i);
    }
    return values;
}

/// True when there is one row for each enumerator, in the declared order, and none of their names is left empty.
template <typename Row, std::size_t count>
consteval bool hasRowForEachEnumerator(const std::array<Row, count>& rows) {
    if (count != enumeratorCount<decltype(Row::value)>()) {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (static_cast<std::size_t>(rows[i].value) != i) {
            return false;
        }
        if constexpr (requires { rows[i].rawValue.empty(); }) {
            if (rows[i].rawValue.empty()) {
                return false;
            }
        }
        if constexpr (requires { rows[i].label.empty(); }) {
            if (rows[i].label.empty()) {
                return false;
            }
        }
        if constexpr (requires { rows[i].shortLabel.empty(); }) {
            if (rows[i].shortLabel.empty()) {
                return false;
            }
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

}  // namespace ScanKit

#include "ScanKit/Support/TOML.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// The library asserts what malformed text does not keep ("[;" for one), and a release build tells some compilers that it
// holds. The checks behind its assertions report the fault: so the assertions are to be nothing in any build.
#pragma push_macro("NDEBUG")
#undef NDEBUG
#define TOML_ASSERT(expression) static_cast<void>(0)
#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_MAX_NESTED_VALUES 32
#include <toml++/toml.h>
#pragma pop_macro("NDEBUG")

namespace ScanKit {
namespace {

constexpr std::size_t mostValues = 1'000'000;
constexpr std::size_t mostKeyDots = 15;

/// The place behind the text in quotes that begins here. One that is not closed ends with its line: the library
/// refuses it later.
std::size_t behindQuoted(std::string_view text, std::size_t begin) {
    const char quote = text[begin];
    const std::string fence(3, quote);
    const bool isLong = text.substr(begin, 3) == fence;
    for (std::size_t i = begin + (isLong ? 3 : 1); i < text.size(); ++i) {
        if (text[i] == '\\' && quote == '"') {
            ++i;
        } else if (!isLong && (text[i] == quote || text[i] == '\n')) {
            return i + 1;
        } else if (isLong && text.substr(i, 3) == fence) {
            // Up to two quotes may stand before the three that close.
            i += 3;
            for (int more = 0; more < 2 && i < text.size() && text[i] == quote; ++more) {
                ++i;
            }
            return i;
        }
    }
    return text.size();
}

/// The library limits how deep values nest, yet neither how many parts a key has, each of which is a level too, nor how many
/// values there are.
bool isWithinLimits(std::string_view text) {
    std::size_t values = 0;
    std::size_t dots = 0;
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        if (c == '"' || c == '\'') {
            i = behindQuoted(text, i);
            continue;
        }
        if (c == '#') {
            i = std::min(text.find('\n', i), text.size());
            continue;
        }
        if (c == '.') {
            ++dots;
        } else if (c == '\n' || c == '=' || c == ',' || c == '[' || c == '{') {
            dots = 0;
            values += c == '\n' ? 0 : 1;
        }
        if (dots > mostKeyDots || values > mostValues) {
            return false;
        }
        ++i;
    }
    return true;
}

template <typename Number>
std::string numberText(Number number) {
    std::array<char, 64> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return std::string(digits.data(), end);
}

template <typename Date>
std::string dateText(const Date& date) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << date;
    return text.str();
}

DataValue valueOf(const toml::node& node);

DataValue tableOf(const toml::table& table) {
    std::vector<std::pair<toml::source_position, DataValue::Member>> placed;
    placed.reserve(table.size());
    for (const auto& [key, node] : table) {
        placed.emplace_back(key.source().begin, DataValue::Member(std::string(key.str()), valueOf(node)));
    }
    std::ranges::stable_sort(placed, [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<DataValue::Member> members;
    members.reserve(placed.size());
    for (auto& [place, member] : placed) {
        members.push_back(std::move(member));
    }
    return DataValue(std::move(members));
}

DataValue listOf(const toml::array& array) {
    std::vector<DataValue> elements;
    elements.reserve(array.size());
    for (const toml::node& node : array) {
        elements.push_back(valueOf(node));
    }
    return DataValue(std::move(elements));
}

DataValue valueOf(const toml::node& node) {
    switch (node.type()) {
        case toml::node_type::table:
            return tableOf(*node.as_table());
        case toml::node_type::array:
            return listOf(*node.as_array());
        case toml::node_type::string:
            return DataValue(node.as_string()->get());
        case toml::node_type::integer:
            return DataValue(numberText(node.as_integer()->get()));
        case toml::node_type::floating_point:
            return DataValue(numberText(node.as_floating_point()->get()));
        case toml::node_type::boolean:
            return DataValue(node.as_boolean()->get());
        case toml::node_type::date:
            return DataValue(dateText(node.as_date()->get()));
        case toml::node_type::time:
            return DataValue(dateText(node.as_time()->get()));
        case toml::node_type::date_time:
            return DataValue(dateText(node.as_date_time()->get()));
        case toml::node_type::none:
            break;
    }
    return {};
}

}  // namespace

std::optional<DataValue> readTOML(std::string_view text) {
    if (text.size() > largestTOML || !isWithinLimits(text)) {
        return std::nullopt;
    }
    const toml::parse_result document = toml::parse(text);
    if (!document) {
        return std::nullopt;
    }
    return tableOf(document.table());
}

}  // namespace ScanKit

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace ScanKit {

/// One value of a document of tables, lists and texts, whatever its notation: what YAML and TOML are read into. Owns all that
/// is below it. A value of another type than asked for reads as absent; there are no conversions.
class DataValue {
public:
    using Member = std::pair<std::string, DataValue>;
    enum class Kind { null, boolean, text, list, table };

    DataValue() = default;
    explicit DataValue(bool value) : value_(value) {}
    /// Numbers, dates and words alike, as they are written.
    explicit DataValue(std::string text) : value_(std::move(text)) {}
    explicit DataValue(std::vector<DataValue> elements) : value_(std::move(elements)) {}
    /// Of several members of one name the last counts.
    explicit DataValue(std::vector<Member> members) : value_(std::move(members)) {}

    Kind kind() const { return static_cast<Kind>(value_.index()); }
    bool isTable() const { return kind() == Kind::table; }
    bool isList() const { return kind() == Kind::list; }

    /// Absent when this is no text.
    std::optional<std::string_view> text() const {
        const auto* const text = std::get_if<std::string>(&value_);
        return text != nullptr ? std::optional<std::string_view>(*text) : std::nullopt;
    }
    std::optional<bool> boolean() const {
        const auto* const boolean = std::get_if<bool>(&value_);
        return boolean != nullptr ? std::optional(*boolean) : std::nullopt;
    }
    /// The member of this name; null when there is none, or when this is no table.
    const DataValue* member(std::string_view name) const {
        const std::vector<Member>& all = members();
        for (auto member = all.rbegin(); member != all.rend(); ++member) {
            if (member->first == name) {
                return &member->second;
            }
        }
        return nullptr;
    }
    /// The member, when it is a text.
    std::optional<std::string_view> textMember(std::string_view name) const {
        const DataValue* const found = member(name);
        return found != nullptr ? found->text() : std::nullopt;
    }
    /// True when the member is there and true.
    bool isTrue(std::string_view name) const {
        const DataValue* const found = member(name);
        return found != nullptr && found->boolean() == true;
    }
    /// In the order of the document; empty when this is no table.
    const std::vector<Member>& members() const {
        static const std::vector<Member> none;
        const auto* const members = std::get_if<std::vector<Member>>(&value_);
        return members != nullptr ? *members : none;
    }
    /// Empty when this is no list.
    const std::vector<DataValue>& elements() const {
        static const std::vector<DataValue> none;
        const auto* const elements = std::get_if<std::vector<DataValue>>(&value_);
        return elements != nullptr ? *elements : none;
    }

    bool operator==(const DataValue&) const = default;

private:
    /// In the order of the kinds.
    std::variant<std::monostate, bool, std::string, std::vector<DataValue>, std::vector<Member>> value_;
};

}  // namespace ScanKit

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ScanKit {

/// One value of a document of tables, lists and texts, whatever its notation: what YAML and TOML are read into. Owns all that
/// is below it. A value of another type than asked for reads as absent; there are no conversions.
class DataValue {
public:
    using Member = std::pair<std::string, DataValue>;
    enum class Kind { null, boolean, text, list, table };

    DataValue() = default;
    explicit DataValue(bool value) : kind_(Kind::boolean), boolean_(value) {}
    /// Numbers, dates and words alike, as they are written.
    explicit DataValue(std::string text) : kind_(Kind::text), text_(std::move(text)) {}
    explicit DataValue(std::vector<DataValue> elements) : kind_(Kind::list), elements_(std::move(elements)) {}
    /// Of several members of one name the last counts.
    explicit DataValue(std::vector<Member> members) : kind_(Kind::table), members_(std::move(members)) {}

    Kind kind() const { return kind_; }
    bool isTable() const { return kind_ == Kind::table; }
    bool isList() const { return kind_ == Kind::list; }

    /// Absent when this is no text.
    std::optional<std::string_view> text() const {
        return kind_ == Kind::text ? std::optional<std::string_view>(text_) : std::nullopt;
    }
    std::optional<bool> boolean() const {
        return kind_ == Kind::boolean ? std::optional(boolean_) : std::nullopt;
    }
    /// The member of this name; null when there is none, or when this is no table.
    const DataValue* member(std::string_view name) const {
        for (auto member = members_.rbegin(); member != members_.rend(); ++member) {
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
    const std::vector<Member>& members() const { return members_; }
    /// Empty when this is no list.
    const std::vector<DataValue>& elements() const { return elements_; }

    bool operator==(const DataValue&) const = default;

private:
    Kind kind_ = Kind::null;
    bool boolean_ = false;
    std::string text_;
    std::vector<DataValue> elements_;
    std::vector<Member> members_;
};

}  // namespace ScanKit

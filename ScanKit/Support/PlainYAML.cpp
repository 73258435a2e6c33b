#include "ScanKit/Support/PlainYAML.h"

#include "ScanKit/Support/YAML.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_set>
#include <utility>

namespace ScanKit {
namespace {

/// Deeper than any lockfile, and far from the end of the stack.
constexpr std::size_t mostLevels = 50;
/// A longer key has to be marked as one, which this reader leaves to others.
constexpr std::size_t longestKey = 1000;

/// Whether the text holds only what a line is made of without a doubt: no tabs, no other line breaks than line feeds, nothing
/// invisible.
bool isPlain(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
        const bool isControl = (byte < 0x20 && byte != '\n') || byte == 0x7F || (byte == 0xC2 && next < 0xA0);
        // The separators of lines and paragraphs begin with E2 80, marks of byte order and what is no character with EF.
        if (isControl || (byte == 0xE2 && next == 0x80) || byte == 0xEF) {
            return false;
        }
    }
    return true;
}

/// Whether a text may begin so without quotation marks, and is nothing but a text then.
bool beginsPlain(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           std::string_view("/_.^~<=(+$").find(c) != std::string_view::npos;
}

bool isItem(std::string_view line) {
    return line == "-" || line.starts_with("- ");
}

bool holdsEqualKeys(const std::vector<DataValue::Member>& members) {
    // Nearly all tables have a few members, and comparing them is less than keeping a set.
    constexpr std::size_t few = 12;
    if (members.size() > few) {
        std::unordered_set<std::string_view> keys;
        keys.reserve(members.size());
        return !std::ranges::all_of(members,
                                    [&](const auto& member) { return keys.insert(member.first).second; });
    }
    for (std::size_t i = 1; i < members.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (members[i].first == members[j].first) {
                return true;
            }
        }
    }
    return false;
}

/// Each function reads what begins where the reader stands and returns it; absent when it is not plain.
class PlainReader {
public:
    explicit PlainReader(std::string_view text) : rest_(text) { advance(); }

    std::optional<std::vector<DataValue>> documents() {
        std::vector<DataValue> documents;
        if (isAtMark()) {
            advance();
        }
        for (;;) {
            std::optional<DataValue> top = goesOnAt(0) ? block(0) : std::nullopt;
            if (!top || (hasLine_ && !isAtMark())) {
                return std::nullopt;
            }
            documents.push_back(std::move(*top));
            if (!hasLine_) {
                return documents;
            }
            advance();
        }
    }

private:
    /// Goes to the next line that is neither empty nor a remark.
    void advance() {
        for (hasLine_ = false; !hasLine_ && !rest_.empty();) {
            const std::string_view line = takeLine();
            const std::size_t begin = line.find_first_not_of(' ');
            if (begin != std::string_view::npos && line[begin] != '#') {
                hasLine_ = true;
                indent_ = begin;
                line_ = line.substr(begin);
            }
        }
    }
    std::string_view takeLine() {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return line;
    }
    bool isAtMark() const { return hasLine_ && indent_ == 0 && line_ == "---"; }
    bool goesOnAt(std::size_t indent) const { return hasLine_ && !isAtMark() && indent_ == indent; }
    bool isDeeper(std::size_t indent) const { return hasLine_ && indent_ > indent; }
    bool isCounted() { return ++values_ <= YAMLLimits::values; }

    std::optional<DataValue> block(std::size_t indent) {
        if (levels_ == mostLevels || !isCounted()) {
            return std::nullopt;
        }
        ++levels_;
        std::optional<DataValue> value = isItem(line_) ? list(indent) : table(indent);
        --levels_;
        return value;
    }

    std::optional<DataValue> list(std::size_t indent) {
        std::vector<DataValue> elements;
        while (goesOnAt(indent) && isItem(line_)) {
            const std::size_t begin = line_.find_first_not_of(' ', 1);
            std::optional<DataValue> value =
                begin != std::string_view::npos ? onOneLine(line_.substr(begin)) : std::nullopt;
            if (!value) {
                return std::nullopt;
            }
            elements.push_back(std::move(*value));
            advance();
            if (isDeeper(indent)) {
                return std::nullopt;
            }
        }
        return DataValue(std::move(elements));
    }

    std::optional<DataValue> table(std::size_t indent) {
        std::vector<DataValue::Member> members;
        while (goesOnAt(indent)) {
            std::optional<std::string> key = blockKey();
            std::optional<DataValue> value = key && isCounted() ? memberValue(indent) : std::nullopt;
            if (!value || isDeeper(indent)) {
                return std::nullopt;
            }
            members.emplace_back(std::move(*key), std::move(*value));
        }
        keepLastOfEqualKeys(members);
        return DataValue(std::move(members));
    }

    /// What stands behind a key, on its line or below; `line_` begins behind the colon.
    std::optional<DataValue> memberValue(std::size_t indent) {
        const std::size_t begin = line_.find_first_not_of(' ');
        if (begin == std::string_view::npos) {
            if (!line_.empty()) {
                return std::nullopt;
            }
            advance();
            if (isDeeper(indent)) {
                return block(indent_);
            }
            if (goesOnAt(indent) && isItem(line_)) {
                return block(indent);
            }
            return isCounted() ? std::optional(DataValue()) : std::nullopt;
        }
        if (line_.substr(begin) == "|-") {
            return literal(indent);
        }
        std::optional<DataValue> value = onOneLine(line_.substr(begin));
        advance();
        return value;
    }

    /// The key at the start of the line, which then begins behind its colon.
    std::optional<std::string> blockKey() {
        std::optional<std::string> key;
        if (line_.front() == '\'' || line_.front() == '"') {
            key = quoted(line_);
        } else if (beginsPlain(line_.front())) {
            std::size_t colon = line_.find(':');
            while (colon != std::string_view::npos && colon + 1 < line_.size() && line_[colon + 1] != ' ') {
                colon = line_.find(':', colon + 1);
            }
            const std::string_view name = line_.substr(0, std::min(colon, line_.size()));
            if (colon == std::string_view::npos || name.ends_with(' ') || holdsRemark(name) || name == "<<") {
                return std::nullopt;
            }
            key = name;
            line_.remove_prefix(colon);
        }
        const bool isFollowed = key && line_.starts_with(':') && (line_.size() == 1 || line_[1] == ' ');
        if (!isFollowed || key->size() > longestKey) {
            return std::nullopt;
        }
        line_.remove_prefix(1);
        return key;
    }

    static bool holdsRemark(std::string_view text) { return text.find(" #") != std::string_view::npos; }

    /// A text of several lines that stand as they are, deeper than `indent`; line feeds at its end do not count.
    std::optional<DataValue> literal(std::size_t indent) {
        std::string text;
        const std::size_t column = std::min(rest_.find_first_not_of(' '), rest_.size());
        if (!isCounted() || column <= indent || column == rest_.size() || rest_[column] == '\n') {
            return std::nullopt;
        }
        while (!rest_.empty()) {
            const std::string_view before = rest_;
            const std::string_view line = takeLine();
            const std::size_t begin = line.find_first_not_of(' ');
            if (begin == std::string_view::npos ? !line.empty() : begin < column && begin > indent) {
                return std::nullopt;  // a line of blanks, or one that is neither of the text nor behind it
            }
            if (!line.empty() && begin < column) {
                rest_ = before;
                break;
            }
            text += line.empty() ? "" : line.substr(column);
            text += '\n';
        }
        text.erase(text.find_last_not_of('\n') + 1);
        advance();
        return DataValue(std::move(text));
    }

    /// A value that ends with the line.
    std::optional<DataValue> onOneLine(std::string_view value) {
        const char first = value.front();
        if (first == '{' || first == '[') {
            std::optional<DataValue> flow = flowValue(value);
            return value.empty() ? std::move(flow) : std::nullopt;
        }
        if (!isCounted()) {
            return std::nullopt;
        }
        if (first == '\'' || first == '"') {
            std::optional<std::string> text = quoted(value);
            return text && value.empty() ? std::optional(DataValue(std::move(*text))) : std::nullopt;
        }
        const bool isOther = value.ends_with(':') || value.ends_with(' ') || holdsRemark(value) ||
                             value.find(": ") != std::string_view::npos;
        return beginsPlain(first) && !isOther ? std::optional(plainScalar(std::string(value))) : std::nullopt;
    }

    /// The text in quotation marks at the start of `from`, which then begins behind it.
    static std::optional<std::string> quoted(std::string_view& from) {
        const char mark = from.front();
        std::string text;
        for (std::size_t begin = 1;;) {
            const std::size_t end = from.find(mark, begin);
            if (end == std::string_view::npos) {
                return std::nullopt;  // goes on below
            }
            text += from.substr(begin, end - begin);
            begin = end + 1;
            if (mark == '"' || begin == from.size() || from[begin] != mark) {
                from.remove_prefix(begin);
                break;
            }
            if (from.substr(begin + 1).starts_with("''")) {
                return std::nullopt;  // four in a row, of which parsers make one or two
            }
            text += mark;  // written twice it stands for itself
            ++begin;
        }
        return mark == '"' && text.find('\\') != std::string::npos ? std::nullopt : std::optional(text);
    }

    static void skipBlanks(std::string_view& from) {
        from.remove_prefix(std::min(from.find_first_not_of(' '), from.size()));
    }

    /// The value at the start of `from`, within braces or brackets or with them; `from` then begins behind it.
    std::optional<DataValue> flowValue(std::string_view& from) {
        if (from.empty() || levels_ == mostLevels || !isCounted()) {
            return std::nullopt;
        }
        if (from.front() == '\'' || from.front() == '"') {
            std::optional<std::string> text = quoted(from);
            return text ? std::optional(DataValue(std::move(*text))) : std::nullopt;
        }
        if (from.front() != '{' && from.front() != '[') {
            std::optional<std::string> text = flowText(from);
            return text ? std::optional(plainScalar(std::move(*text))) : std::nullopt;
        }
        ++levels_;
        std::optional<DataValue> value = from.front() == '{' ? flowTable(from) : flowList(from);
        --levels_;
        return value;
    }

    std::optional<DataValue> flowTable(std::string_view& from) {
        std::vector<DataValue::Member> members;
        from.remove_prefix(1);
        skipBlanks(from);
        while (!from.starts_with('}')) {
            const bool isQuoted = from.starts_with('\'') || from.starts_with('"');
            std::optional<std::string> key = isQuoted ? quoted(from) : flowText(from);
            if (!key || key->size() > longestKey || key == "<<" || !from.starts_with(": ") || !isCounted()) {
                return std::nullopt;
            }
            from.remove_prefix(1);
            skipBlanks(from);
            std::optional<DataValue> value = flowValue(from);
            if (!value || !endsElement(from, '}')) {
                return std::nullopt;
            }
            members.emplace_back(std::move(*key), std::move(*value));
        }
        from.remove_prefix(1);
        keepLastOfEqualKeys(members);
        return DataValue(std::move(members));
    }

    std::optional<DataValue> flowList(std::string_view& from) {
        std::vector<DataValue> elements;
        from.remove_prefix(1);
        skipBlanks(from);
        while (!from.starts_with(']')) {
            std::optional<DataValue> value = flowValue(from);
            if (!value || !endsElement(from, ']')) {
                return std::nullopt;
            }
            elements.push_back(std::move(*value));
        }
        from.remove_prefix(1);
        return DataValue(std::move(elements));
    }

    /// Goes to the next element, or to the closing bracket. False when neither follows.
    static bool endsElement(std::string_view& from, char close) {
        skipBlanks(from);
        if (from.starts_with(close)) {
            return true;
        }
        if (!from.starts_with(", ")) {
            return false;
        }
        from.remove_prefix(1);
        skipBlanks(from);
        return !from.starts_with(close);
    }

    /// A text without quotation marks among others; it ends before a bracket, a comma, or a colon with a blank.
    static std::optional<std::string> flowText(std::string_view& from) {
        if (!from.empty() && !beginsPlain(from.front())) {
            return std::nullopt;
        }
        std::size_t end = 0;
        while (end < from.size() && std::string_view(",[]{}").find(from[end]) == std::string_view::npos) {
            const char next = end + 1 < from.size() ? from[end + 1] : ' ';
            if (from[end] == ':' && next == ' ') {
                break;
            }
            // A colon before a bracket or a comma is one to some and a character to others.
            if (from[end] == ':' && std::string_view(",[]{}").find(next) != std::string_view::npos) {
                return std::nullopt;
            }
            ++end;
        }
        const std::string_view text = from.substr(0, end);
        if (text.empty() || text.ends_with(' ') || holdsRemark(text)) {
            return std::nullopt;
        }
        from.remove_prefix(end);
        return std::string(text);
    }

    std::string_view rest_;  ///< behind the line
    std::string_view line_;  ///< without its indentation
    std::size_t indent_ = 0;
    bool hasLine_ = false;
    std::size_t levels_ = 0;
    std::size_t values_ = 0;
};

}  // namespace

void keepLastOfEqualKeys(std::vector<DataValue::Member>& members) {
    if (!holdsEqualKeys(members)) {
        return;
    }
    std::unordered_set<std::string_view> seen;
    std::vector<bool> isOlder(members.size());
    for (std::size_t i = members.size(); i-- > 0;) {
        isOlder[i] = !seen.insert(members[i].first).second;
    }
    std::vector<DataValue::Member> kept;
    kept.reserve(seen.size());
    for (std::size_t i = 0; i < members.size(); ++i) {
        if (!isOlder[i]) {
            kept.push_back(std::move(members[i]));
        }
    }
    members = std::move(kept);
}

DataValue plainScalar(std::string text) {
    if (text == "true" || text == "false") {
        return DataValue(text == "true");
    }
    return text.empty() || text == "null" || text == "~" ? DataValue() : DataValue(std::move(text));
}

std::optional<std::vector<DataValue>> readPlainYAML(std::string_view text) {
    return isPlain(text) ? PlainReader(text).documents() : std::nullopt;
}

}  // namespace ScanKit

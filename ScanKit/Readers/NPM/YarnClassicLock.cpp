#include "ScanKit/Readers/NPM/YarnClassicLock.h"

#include "ScanKit/Support/Text.h"

#include <utility>

namespace ScanKit::NPMParser {
namespace {

constexpr std::size_t indentWidth = 2;

/// Reads the words of one line from left to right.
class LineReader {
public:
    explicit LineReader(std::string_view line) : rest_(line) {}

    bool isAtEnd() const { return rest_.empty(); }
    bool take(std::string_view what) {
        const bool isThere = rest_.starts_with(what);
        rest_.remove_prefix(isThere ? what.size() : 0);
        return isThere;
    }
    /// A word in quotation marks, or one up to any of these characters; absent when it is neither or empty.
    std::optional<std::string> word(std::string_view ends) {
        if (take("\"")) {
            return quoted();
        }
        // Other characters stand in quotation marks; so the marks of a merge are no words.
        if (rest_.empty() ||
            std::string_view("<=>|,:{}[]&*!").find(rest_.front()) != std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view found = rest_.substr(0, rest_.find_first_of(ends));
        rest_.remove_prefix(found.size());
        return found.find('"') == std::string_view::npos ? std::optional<std::string>(found) : std::nullopt;
    }

private:
    std::optional<std::string> quoted() {
        std::string text;
        while (!rest_.empty()) {
            const char next = rest_.front();
            rest_.remove_prefix(1);
            if (next == '"') {
                return text;
            }
            if (next != '\\') {
                text += next;
                continue;
            }
            if (rest_.empty() || std::string_view("\\\"/").find(rest_.front()) == std::string_view::npos) {
                return std::nullopt;  // no name, range or address holds what the other escapes stand for
            }
            text += rest_.front();
            rest_.remove_prefix(1);
        }
        return std::nullopt;
    }

    std::string_view rest_;
};

class ClassicReader {
public:
    /// False when the line is not of this notation.
    bool read(std::string_view line) {
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == std::string_view::npos || line[indent] == '#') {
            return true;
        }
        LineReader words(line.substr(indent));
        switch (indent) {
            case 0:
                return readPatterns(words);
            case indentWidth:
                return !entries_.empty() && readMember(words);
            case 2 * indentWidth:
                return isInBlock_ && readRequest(words);
            default:
                return false;
        }
    }
    std::vector<ClassicEntry> take() { return std::move(entries_); }

private:
    bool readPatterns(LineReader& words) {
        ClassicEntry entry;
        do {
            std::optional<std::string> pattern = words.word(",: ");
            if (!pattern || pattern->empty()) {
                return false;
            }
            entry.patterns.push_back(std::move(*pattern));
        } while (words.take(", "));
        entries_.push_back(std::move(entry));
        isInBlock_ = false;
        return words.take(":") && words.isAtEnd();
    }

    bool readMember(LineReader& words) {
        const std::optional<std::string> name = words.word(" :");
        block_ = nullptr;
        isInBlock_ = words.take(":");
        if (!name) {
            return false;
        }
        ClassicEntry& entry = entries_.back();
        if (isInBlock_) {
            block_ = *name == "dependencies"           ? &entry.dependencies
                     : *name == "optionalDependencies" ? &entry.optionalDependencies
                                                       : nullptr;
            return words.isAtEnd();
        }
        std::optional<std::string> value = words.take(" ") ? words.word("") : std::nullopt;
        if (!value || !words.isAtEnd()) {
            return false;
        }
        if (*name == "version") {
            entry.version = std::move(*value);
        } else if (*name == "resolved") {
            entry.resolved = std::move(*value);
        }
        return true;
    }

    bool readRequest(LineReader& words) {
        std::optional<std::string> name = words.word(" ");
        std::optional<std::string> range = words.take(" ") ? words.word("") : std::nullopt;
        if (!name || !range || !words.isAtEnd()) {
            return false;
        }
        if (block_ != nullptr) {
            block_->push_back({std::move(*name), std::move(*range)});
        }
        return true;
    }

    std::vector<ClassicEntry> entries_;
    std::vector<Request>* block_ =
        nullptr;  ///< of the last entry; null in a block that nothing is taken from
    bool isInBlock_ = false;
};

}  // namespace

std::optional<std::vector<ClassicEntry>> readYarnClassic(std::string_view text) {
    if (text.size() > mostYarnClassicBytes || !Text::isValidUtf8(text)) {
        return std::nullopt;
    }
    ClassicReader reader;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        if (!reader.read(line)) {
            return std::nullopt;
        }
    }
    return reader.take();
}

}  // namespace ScanKit::NPMParser

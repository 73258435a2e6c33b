#include "ScanKit/Readers/Python/Marker.h"

#include <string>
#include <vector>

namespace ScanKit::PythonParser {
namespace {

constexpr int mostLevels = 100;

/// Words, texts with their opening quote, parentheses and operators.
std::vector<std::string_view> tokensOf(std::string_view text) {
    std::vector<std::string_view> tokens;
    while (true) {
        const std::size_t start = text.find_first_not_of(" \t\r\n");
        if (start == std::string_view::npos) {
            return tokens;
        }
        text.remove_prefix(start);
        std::size_t length = 1;
        if (text[0] == '"' || text[0] == '\'') {
            length = text.substr(0, text.find(text[0], 1)).size();
        } else if (text[0] != '(' && text[0] != ')') {
            length = text.substr(0, text.find_first_of(" \t\r\n()'\"", 1)).size();
        }
        tokens.push_back(text.substr(0, length));
        const bool isClosed = (text[0] == '"' || text[0] == '\'') && length < text.size();
        text.remove_prefix(length + (isClosed ? 1 : 0));
    }
}

bool isText(std::string_view token) {
    return token.starts_with('"') || token.starts_with('\'');
}

class MarkerReader {
public:
    MarkerReader(std::string_view text,
                 const std::function<bool(std::string_view, std::string_view)>& isChosen)
        : tokens_(tokensOf(text)), isChosen_(isChosen) {}

    MarkerVerdict read() {
        const MarkerVerdict verdict = alternatives();
        return isWrong_ || next_ != tokens_.size() ? MarkerVerdict{} : verdict;
    }

private:
    bool takes(std::string_view token) {
        const bool isNext = next_ < tokens_.size() && tokens_[next_] == token;
        next_ += isNext ? 1 : 0;
        return isNext;
    }
    std::string_view take() {
        isWrong_ = isWrong_ || next_ >= tokens_.size();
        return isWrong_ ? std::string_view{} : tokens_[next_++];
    }

    MarkerVerdict alternatives() {
        MarkerVerdict verdict = conjunction();
        while (takes("or")) {
            const MarkerVerdict other = conjunction();
            verdict = {.mayHold = verdict.mayHold || other.mayHold,
                       .mayFail = verdict.mayFail && other.mayFail};
        }
        return verdict;
    }

    MarkerVerdict conjunction() {
        MarkerVerdict verdict = single();
        while (takes("and")) {
            const MarkerVerdict other = single();
            verdict = {.mayHold = verdict.mayHold && other.mayHold,
                       .mayFail = verdict.mayFail || other.mayFail};
        }
        return verdict;
    }

    MarkerVerdict single() {
        if (isWrong_ || !takes("(")) {
            return comparison();
        }
        isWrong_ = ++level_ > mostLevels;
        const MarkerVerdict verdict = isWrong_ ? MarkerVerdict{} : alternatives();
        --level_;
        isWrong_ = isWrong_ || !takes(")");
        return verdict;
    }

    MarkerVerdict comparison() {
        const std::string_view left = take();
        const bool isNegated = takes("not");
        const std::string_view sign = take();
        const std::string_view right = take();
        const bool isSet = right == "extras" || right == "dependency_groups";
        if (isWrong_ || sign != "in" || !isSet || !isText(left)) {
            return {};
        }
        const bool holds = isChosen_(right, left.substr(1)) != isNegated;
        return {.mayHold = holds, .mayFail = !holds};
    }

    std::vector<std::string_view> tokens_;
    const std::function<bool(std::string_view, std::string_view)>& isChosen_;
    std::size_t next_ = 0;
    int level_ = 0;
    bool isWrong_ = false;
};

}  // namespace

MarkerVerdict markerVerdict(
    std::string_view marker,
    const std::function<bool(std::string_view set, std::string_view name)>& isChosen) {
    return MarkerReader(marker, isChosen).read();
}

}  // namespace ScanKit::PythonParser

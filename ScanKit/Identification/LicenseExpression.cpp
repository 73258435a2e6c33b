#include "ScanKit/Identification/LicenseExpression.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

constexpr std::size_t deepestNesting = 1000;
constexpr auto reservedWords = std::to_array<std::string_view>({"AND", "OR", "WITH", ")"});

/// Words and parentheses. A character is a parenthesis only when it stands alone, without a combining mark.
std::vector<std::string> tokensOf(std::string_view text) {
    std::vector<std::string> tokens;
    std::string word;
    const auto endWord = [&] {
        if (!word.empty()) {
            tokens.push_back(std::move(word));
            word.clear();
        }
    };
    Text::forEachCharacter(text, [&](std::string_view character) {
        std::size_t offset = 0;
        if (character == "(" || character == ")") {
            endWord();
            tokens.emplace_back(character);
        } else if (Text::isWhitespace(Text::nextScalar(character, offset))) {
            endWord();
        } else {
            word += character;
        }
    });
    endWord();
    return tokens;
}

/// Reads the grammar by descent: OR binds loosest, then AND, then WITH.
class Parser {
public:
    explicit Parser(std::vector<std::string> tokens) : tokens_(std::move(tokens)) {}

    std::optional<LicenseExpression> wholeExpression() {
        std::optional<LicenseExpression> result = expression();
        if (next_ != tokens_.size()) {
            return std::nullopt;
        }
        return result;
    }

private:
    bool nextIs(std::string_view keyword) const {
        return next_ < tokens_.size() && Text::uppercased(tokens_[next_]) == keyword;
    }

    bool take(std::string_view keyword) {
        if (!nextIs(keyword)) {
            return false;
        }
        ++next_;
        return true;
    }

    std::optional<LicenseExpression> expression() {
        return group("OR", &Parser::andTerm, &LicenseExpression::anyOf);
    }

    std::optional<LicenseExpression> andTerm() {
        return group("AND", &Parser::withTerm, &LicenseExpression::allOf);
    }

    /// Terms parted by one keyword; a single term stands for itself.
    std::optional<LicenseExpression> group(std::string_view keyword,
                                           std::optional<LicenseExpression> (Parser::*term)(),
                                           LicenseExpression (*make)(std::vector<LicenseExpression>)) {
        std::vector<LicenseExpression> terms;
        do {
            std::optional<LicenseExpression> one = (this->*term)();
            if (!one) {
                return std::nullopt;
            }
            terms.push_back(std::move(*one));
        } while (take(keyword));
        return terms.size() == 1 ? std::move(terms.front()) : make(std::move(terms));
    }

    std::optional<LicenseExpression> withTerm() {
        const bool isGroup = nextIs("(");
        std::optional<LicenseExpression> term = primary();
        if (!term || !take("WITH")) {
            return term;
        }
        // An exception belongs to one license: "(MIT AND ISC) WITH x" says nothing about either.
        if (isGroup || next_ == tokens_.size()) {
            return std::nullopt;
        }
        return LicenseExpression::license(term->id(), tokens_[next_++]);
    }

    std::optional<LicenseExpression> primary() {
        if (next_ == tokens_.size()) {
            return std::nullopt;
        }
        if (take("(")) {
            return parenthesized();
        }
        const std::string& token = tokens_[next_];
        if (std::ranges::find(reservedWords, Text::uppercased(token)) != reservedWords.end()) {
            return std::nullopt;
        }
        // One unknown member makes the whole unknown: half an expression would be calmer than what was declared.
        const auto id = SPDX::canonicalID(token);
        if (!id) {
            return std::nullopt;
        }
        ++next_;
        return LicenseExpression::license(std::string(*id));
    }

    std::optional<LicenseExpression> parenthesized() {
        // Descending further for a hostile line of parentheses would end the program.
        if (depth_ == deepestNesting) {
            return std::nullopt;
        }
        ++depth_;
        std::optional<LicenseExpression> inside = expression();
        --depth_;
        if (!inside || !take(")")) {
            return std::nullopt;
        }
        return inside;
    }

    std::vector<std::string> tokens_;
    std::size_t next_ = 0;
    std::size_t depth_ = 0;
};

std::string printed(const LicenseExpression& expression, bool isTopLevel) {
    if (expression.kind() == LicenseExpression::Kind::license) {
        return expression.exception() ? expression.id() + " WITH " + *expression.exception()
                                      : expression.id();
    }
    std::vector<std::string> members;
    for (const LicenseExpression& member : expression.members()) {
        members.push_back(printed(member, false));
    }
    const bool isChoice = expression.kind() == LicenseExpression::Kind::anyOf;
    const std::string text = Text::joined(members, isChoice ? " OR " : " AND ");
    return isTopLevel ? text : "(" + text + ")";
}

LicenseCategory categoryOfLicense(const LicenseExpression& license) {
    const KnownLicense* row = SPDX::lookup(license.id());
    const LicenseCategory category = row != nullptr ? row->category : LicenseCategory::unknown;
    // What such an exception allows is mostly linking; which exception it is, a reader has to check.
    if (category == LicenseCategory::strongCopyleft && license.exception()) {
        return LicenseCategory::weakCopyleft;
    }
    return category;
}

void collectLeaves(const LicenseExpression& expression, std::vector<const LicenseExpression*>& leaves) {
    if (expression.kind() == LicenseExpression::Kind::license) {
        leaves.push_back(&expression);
    }
    for (const LicenseExpression& member : expression.members()) {
        collectLeaves(member, leaves);
    }
}

}  // namespace

LicenseExpression LicenseExpression::license(std::string id, std::optional<std::string> exception) {
    LicenseExpression expression;
    expression.id_ = std::move(id);
    expression.exception_ = std::move(exception);
    return expression;
}

LicenseExpression LicenseExpression::allOf(std::vector<LicenseExpression> members) {
    LicenseExpression expression;
    expression.kind_ = Kind::allOf;
    expression.members_ = std::move(members);
    return expression;
}

LicenseExpression LicenseExpression::anyOf(std::vector<LicenseExpression> members) {
    LicenseExpression expression;
    expression.kind_ = Kind::anyOf;
    expression.members_ = std::move(members);
    return expression;
}

std::optional<LicenseExpression> LicenseExpression::parse(std::string_view text) {
    return Parser(tokensOf(text)).wholeExpression();
}

std::optional<LicenseExpression> LicenseExpression::fromSeparatedNames(std::string_view text) {
    std::vector<LicenseExpression> members;
    for (const std::string_view part : Text::split(text, "/,|")) {
        const std::string_view name = Text::trimmed(part);
        if (name.empty()) {
            continue;
        }
        const auto id = SPDX::normalize(name);
        if (!id) {
            return std::nullopt;
        }
        members.push_back(license(std::string(*id)));
    }
    return members.size() < 2 ? std::nullopt : std::optional(anyOf(std::move(members)));
}

std::string LicenseExpression::description() const {
    return printed(*this, true);
}

LicenseCategory LicenseExpression::category() const {
    if (kind_ == Kind::license) {
        return categoryOfLicense(*this);
    }
    if (members_.empty()) {
        return LicenseCategory::unknown;
    }
    // Each member is asked once: asking one twice would double the work at every level of nesting.
    const bool isChoice = kind_ == Kind::anyOf;
    LicenseCategory decided = isChoice ? allLicenseCategories.back() : allLicenseCategories.front();
    for (const LicenseExpression& member : members_) {
        decided = isChoice ? std::min(decided, member.category()) : std::max(decided, member.category());
    }
    return decided;
}

const LicenseExpression& LicenseExpression::chosenOption() const {
    if (kind_ != Kind::anyOf || members_.empty()) {
        return *this;
    }
    const LicenseCategory least = category();
    return *std::ranges::find(members_, least, &LicenseExpression::category);
}

std::vector<std::string> LicenseExpression::licenseIDs() const {
    std::vector<std::string> ids;
    for (const LicenseExpression* leaf : leaves()) {
        ids.push_back(leaf->id());
    }
    return ids;
}

std::vector<const LicenseExpression*> LicenseExpression::leaves() const {
    std::vector<const LicenseExpression*> result;
    collectLeaves(*this, result);
    return result;
}

}  // namespace ScanKit

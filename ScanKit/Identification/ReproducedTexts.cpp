#include "ScanKit/Identification/ReproducedTexts.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ScanKit {
namespace {

/// The expression with the option in place of each choice.
LicenseExpression withoutChoices(const LicenseExpression& expression) {
    const bool isChoice = expression.kind() == LicenseExpression::Kind::anyOf;
    if (isChoice && !expression.members().empty()) {
        return withoutChoices(expression.chosenOption());
    }
    if (expression.kind() != LicenseExpression::Kind::allOf) {
        return expression;
    }
    std::vector<LicenseExpression> members;
    std::ranges::transform(expression.members(), std::back_inserter(members), withoutChoices);
    return LicenseExpression::allOf(std::move(members));
}

/// A copyright line at the head of the text, before the first sentence of the license. What stands in an appendix says
/// how others apply the license, and is no gap.
std::optional<std::string_view> placeholderOf(std::string_view text) {
    static constexpr std::size_t headBytes = 200;
    const std::vector<std::string_view> lines = Text::nonEmptyLines(text.substr(0, headBytes));
    const auto found = std::ranges::find_if(lines, [](std::string_view line) {
        return line.starts_with("Copyright") &&
               (line.find("<year>") != std::string_view::npos || line.find("YEAR") != std::string_view::npos);
    });
    return found == lines.end() ? std::nullopt : std::optional(*found);
}

ReproducedText textOf(const std::string& identifier) {
    ReproducedText one{.identifier = identifier};
    const KnownLicense* known = SPDX::lookup(identifier);
    if (const auto text = known != nullptr && known->text ? SPDX::builtInText(*known->text) : std::nullopt) {
        one.text = Text::trimmed(*text);
        one.placeholder = placeholderOf(*one.text);
    }
    return one;
}

bool hasText(const ReproducedText& one) {
    return one.text.has_value();
}

}  // namespace

bool ReproducedTexts::hasAny() const {
    return std::ranges::any_of(texts, hasText);
}

bool ReproducedTexts::hasEveryLicense() const {
    return std::ranges::all_of(texts, [](const ReproducedText& one) { return one.text || one.isException; });
}

std::vector<std::string> ReproducedTexts::identifiers(bool withText) const {
    std::vector<std::string> chosen;
    for (const ReproducedText& one : texts) {
        if (hasText(one) == withText) {
            chosen.push_back(one.identifier);
        }
    }
    return chosen;
}

ReproducedTexts reproducedTexts(const LicenseExpression& expression) {
    ReproducedTexts reproduced;
    const LicenseExpression taken = withoutChoices(expression);
    if (taken != expression) {
        reproduced.takenOption = taken.description();
    }
    const auto add = [&](ReproducedText one) {
        auto& texts = reproduced.texts;
        if (std::ranges::find(texts, one.identifier, &ReproducedText::identifier) == texts.end()) {
            texts.push_back(std::move(one));
        }
    };
    for (const LicenseExpression* license : taken.leaves()) {
        add(textOf(license->id()));
        if (license->exception()) {
            add({.identifier = *license->exception(), .isException = true});
        }
    }
    return reproduced;
}

ReproducedTexts reproducedTexts(const std::optional<std::string>& license) {
    const auto expression = license ? LicenseExpression::parse(*license) : std::nullopt;
    return expression ? reproducedTexts(*expression) : ReproducedTexts();
}

}  // namespace ScanKit

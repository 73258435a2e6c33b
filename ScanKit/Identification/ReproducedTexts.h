#pragma once

#include "ScanKit/Identification/LicenseExpression.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// What a NOTICE file reproduces for a license or an exception when the package ships no text of its own.
struct ReproducedText {
    std::string identifier;                ///< as the expression names it
    std::optional<std::string_view> text;  ///< absent when none is built in, as for every exception
    /// The line of the text that its author should have filled in with a year and a name; absent when there is none.
    std::optional<std::string_view> placeholder;
    bool isException = false;
};

/// The one answer to which texts stand in for a missing license file: what notes promise of a NOTICE file is what it holds.
struct ReproducedTexts {
    /// Each license in the order of the expression, an exception behind its license, each identifier once.
    std::vector<ReproducedText> texts;
    /// What is taken of the licenses offered; absent when the expression offers no choice.
    std::optional<std::string> takenOption;

    bool hasAny() const;           ///< a text for one of the licenses at least
    bool hasEveryLicense() const;  ///< a text for each of them, exceptions aside
    /// The identifiers of those with a text, or of those without, exceptions among them.
    std::vector<std::string> identifiers(bool withText) const;
};

/// The texts of the options that the expression prefers, in groups within it, too.
ReproducedTexts reproducedTexts(const LicenseExpression& expression);
/// The same for a license as a dependency carries it; no texts when it is absent or no expression.
ReproducedTexts reproducedTexts(const std::optional<std::string>& license);

}  // namespace ScanKit

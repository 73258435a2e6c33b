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
    bool isException = false;
};

/// The texts of the option that the expression prefers: each license in its order, an exception behind its license, each
/// identifier once.
std::vector<ReproducedText> reproducedTexts(const LicenseExpression& expression);

}  // namespace ScanKit

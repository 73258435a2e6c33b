#include "ScanKit/Identification/ReproducedTexts.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

namespace ScanKit {

std::vector<ReproducedText> reproducedTexts(const LicenseExpression& expression) {
    std::vector<ReproducedText> texts;
    const auto add = [&](ReproducedText one) {
        if (std::ranges::find(texts, one.identifier, &ReproducedText::identifier) == texts.end()) {
            texts.push_back(std::move(one));
        }
    };
    for (const LicenseExpression* license : expression.chosenOption().leaves()) {
        const KnownLicense* known = SPDX::lookup(license->id());
        const auto text = known != nullptr && known->text ? SPDX::builtInText(*known->text) : std::nullopt;
        add({license->id(), text ? std::optional(Text::trimmed(*text)) : std::nullopt, false});
        if (license->exception()) {
            add({*license->exception(), std::nullopt, true});
        }
    }
    return texts;
}

}  // namespace ScanKit

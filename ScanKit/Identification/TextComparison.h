#pragma once

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/TextSet.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace ScanKit {

/// One text beside all built-in license texts. Each set of them is looked up when it is first needed: most texts never need
/// the references.
class TextComparison {
public:
    /// Views the text.
    explicit TextComparison(const LicenseText& text) : words_(text.words) {}

    /// How much of each standard and of each reference text stands in this one; all words count.
    std::vector<LicenseMatcher::Candidate> candidates();

    /// Marks the words that stand in the text of this license.
    WordMarks marksOf(std::string_view licenseId);
    /// Marks the words that may stand in a text of these licenses, or in their notices: an LGPL names the GPL, too. `held` are
    /// standard texts that are there nearly whole though another license fits better.
    WordMarks marksOfReading(const std::vector<std::string_view>& licenseIds,
                             const std::vector<std::string_view>& held);

private:
    struct Texts {
        TextSet::Members standard = 0;
        TextSet::Members reference = 0;
    };

    const TextSet::Lookup& standard();
    const TextSet::Lookup& reference();
    WordMarks marks(Texts texts);

    std::span<const std::uint64_t> words_;
    std::optional<TextSet::Lookup> standard_, reference_;
};

}  // namespace ScanKit

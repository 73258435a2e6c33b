#pragma once

#include "ScanKit/Identification/LicenseWords.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// What a license text says that stands in none of the licenses it reads as. Copyright lines, titles and lines of
/// addresses are no part of it, and neither are single words that a copy changed.
struct Remainder {
    /// Words of the text, one after the other.
    struct Passage {
        std::size_t begin = 0;      ///< its first word, counted in LicenseText::words
        std::size_t end = 0;        ///< behind its last word
        std::size_t wordCount = 0;  ///< without the lines that are no part of a remainder
        bool setsTerms = false;     ///< asks or forbids something

        bool operator==(const Passage&) const = default;
    };

    std::vector<Passage> passages;  ///< in order of position
    std::size_t wordCount = 0;      ///< of all of them
    bool setsTerms = false;         ///< one of them does
    /// The terms stand in the middle of the only license: the text is another license, made of its words.
    bool changesTheLicense = false;

    /// Enough to be worth a note.
    bool isOfSubstance() const;

    bool operator==(const Remainder&) const = default;
};

/// The remainder that `covered`, with a mark for each word of the text, leaves over.
Remainder remainderOf(const LicenseText& text, const WordMarks& covered);

/// How the remainder begins, for telling people of it: the first passage that sets terms, or else the first, from where its
/// sentence begins, on one line, cut behind a word. Empty without passages.
std::string beginningOf(const Remainder& remainder, const LicenseText& text);

/// The passages as they stand in the text, each from its first word to its last.
std::vector<std::string_view> partsOf(const Remainder& remainder, const LicenseText& text);

}  // namespace ScanKit

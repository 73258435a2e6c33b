#pragma once

#include "ScanKit/Identification/LicenseMatcher.h"
#include "ScanKit/Identification/LicenseWords.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace ScanKit {

/// A set of license texts, prepared for comparing with others by runs of three words. Never changes once it is made.
class TextSet {
public:
    struct Source {
        std::string_view id, text;
    };
    /// Some of the set's texts: bit i stands for the i-th.
    using Members = std::uint32_t;

    static constexpr std::size_t shingleLength = 3;
    static constexpr std::size_t mostTexts = 32;

    /// Takes at most `mostTexts` sources, whose views live as long as the program. Several may have the same id.
    explicit TextSet(const std::vector<Source>& sources);

    std::span<const std::string_view> ids() const { return ids_; }
    /// The texts of this id; none for an id that is not in the set.
    Members member(std::string_view id) const;

    /// Scores the license words of a text against those of each text of the set, in the order of the sources.
    std::vector<LicenseMatcher::Candidate> candidates(std::span<const std::uint64_t> licenseWords) const;

    /// What the set holds of one shingle.
    struct Found {
        std::uint32_t slot = 0;
        Members byLicenseWords = 0;
        Members byAllWords = 0;
    };

    /// The words of a text, looked up once for what follows.
    class Lookup {
    public:
        Lookup(const TextSet& set, std::span<const std::uint64_t> words);

        /// Scores all words of the text against all words of each text of the set: however the lines are broken, and whatever
        /// lines are added. Regions count all words.
        std::vector<LicenseMatcher::Candidate> candidates() const;
        /// Marks the words that stand in one of the members, three in a row.
        void mark(Members members, WordMarks& marks) const;

    private:
        friend class TextSet;
        const TextSet* set_;
        std::vector<Found> found_;  ///< of the three words that begin at each word
    };

private:
    /// One shingle and the texts that hold it, by their license words and by all their words.
    struct Entry {
        std::uint64_t hash = 0;
        Members byLicenseWords = 0;
        Members byAllWords = 0;

        bool isFree() const { return byLicenseWords == 0 && byAllWords == 0; }
    };
    /// What one text is compared by.
    struct Size {
        std::size_t words = 0;
        std::size_t shingles = 0;  ///< each once
    };

    std::size_t slotOf(std::uint64_t hash) const;
    Size add(std::span<const std::uint64_t> words, Members bit, Members Entry::*holders);
    std::vector<LicenseMatcher::Candidate> scored(std::span<const Found> found, Members Found::*holders,
                                                  const std::vector<Size>& sizes) const;

    std::vector<std::string_view> ids_;
    std::vector<Size> licenseSizes_;
    std::vector<Size> fullSizes_;
    std::vector<Entry> slots_;  ///< open addressing; their number is a power of two
};

/// The sixteen standard texts, which reports reproduce, in the order of the known licenses.
const TextSet& standardLicenseTexts();
/// The texts of the other known licenses. Made when it is first asked for, which most scans never do.
const TextSet& referenceLicenseTexts();

}  // namespace ScanKit

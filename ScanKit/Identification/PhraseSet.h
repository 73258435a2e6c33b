#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ScanKit {

/// Phrases that are looked for in the words of a text, all in one pass. Never changes once it is made.
class PhraseSet {
public:
    /// A phrase, by its place in the list, and where it stands.
    struct Occurrence {
        std::size_t phrase = 0;
        std::size_t begin = 0;  ///< its first word
        std::size_t end = 0;    ///< behind its last word

        bool operator==(const Occurrence&) const = default;
    };

    /// Each phrase in lower case, its words joined by single blanks.
    explicit PhraseSet(std::span<const std::string_view> phrases);

    /// Every occurrence in these words (LicenseText::words), in order of position.
    std::vector<Occurrence> occurrences(std::span<const std::uint64_t> words) const;

private:
    struct Phrase {
        std::size_t place;
        std::vector<std::uint64_t> words;
    };

    std::unordered_map<std::uint64_t, std::vector<Phrase>> byFirstWord_;
    /// A bit for each first word, by a part of its hash: most words of a text are passed over without a search.
    std::vector<bool> mayBegin_;
};

/// The phrases that stand in one column of a table.
template <typename Rows, typename Column>
PhraseSet phrasesOf(const Rows& rows, Column column) {
    std::vector<std::string_view> phrases;
    for (const auto& row : rows) {
        phrases.push_back(row.*column);
    }
    return PhraseSet(phrases);
}

}  // namespace ScanKit

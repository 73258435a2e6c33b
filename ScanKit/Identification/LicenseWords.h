#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// A run of letters and digits. Words that differ only in case have the same hash, and "licence" has that of
/// "license". Hashes hold within one run of the program.
struct LicenseWord {
    std::string_view bytes;  ///< as it stands in the text; in lower case when the line holds more than ASCII
    std::uint64_t hash = 0;

    /// The word in lower case, "licence" spelled "license".
    std::string lowercased() const;
};

/// One line of a license text.
struct LicenseLine {
    std::span<const LicenseWord> words;
    std::string_view bytes;  ///< the whole line, without its break
    /// False for what differs between copies of the same license: copyright lines, and short lines that grant
    /// nothing, such as a project's name or a date.
    bool isPartOfLicense = true;
    /// True for a line that begins like a copyright line and does not go on with a sentence about copyright, as the second
    /// half of "the above copyright notice and this permission notice" does where a line ends within it.
    bool isCopyright = false;
    bool beginsParagraph = false;  ///< the first of the text, or below an empty line
};

/// Calls `body` with each line that holds a word, in order. One pass over the text; the line lives during the
/// call. This is the only place that knows how a license text falls into words.
void forEachLicenseLine(std::string_view text, const std::function<void(const LicenseLine&)>& body);

/// A text fallen into words, once for all that is asked of it. Views the text.
struct LicenseText {
    struct Line {
        std::size_t wordsEnd = 0;  ///< behind its last word, counted in `words`
        std::string_view bytes;    ///< in the text that the words are of
        bool isCopyright = false;
        bool beginsParagraph = false;
    };

    std::string_view bytes;                   ///< the text itself
    std::vector<std::uint64_t> words;         ///< hashes of all words
    std::vector<std::uint64_t> licenseWords;  ///< of those in lines that are part of the license
    std::vector<Line> lines;                  ///< that hold a word
    std::string joinedWords;                  ///< all words in lower case, joined by single blanks

    explicit LicenseText(std::string_view text);
};

/// Whether the words stand in the text as whole words: "the linux consortium" does not hold "x consortium". Both are in
/// lower case and joined by single blanks.
bool holdsWords(std::string_view joinedWords, std::string_view words);

/// A mark, 0 or 1, for each word of a text.
using WordMarks = std::vector<char>;

/// The hash of a word that is in lower case already.
std::uint64_t licenseWordHash(std::string_view lowercaseWord);
/// The hash of a run of words, made by adding one word after the other to 0.
constexpr std::uint64_t withWord(std::uint64_t run, std::uint64_t wordHash) {
    return std::rotl(run, 23) * 0x9E3779B97F4A7C15U + wordHash;
}

}  // namespace ScanKit

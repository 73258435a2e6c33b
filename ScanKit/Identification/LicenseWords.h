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
    /// False for what differs between copies of the same license: copyright lines, and short lines that grant
    /// nothing, such as a project's name or a date.
    bool isPartOfLicense = true;
};

/// Calls `body` with each line that holds a word, in order. One pass over the text; the line lives during the
/// call. This is the only place that knows how a license text falls into words.
void forEachLicenseLine(std::string_view text, const std::function<void(const LicenseLine&)>& body);

/// A text fallen into words, once for all that is asked of it.
struct LicenseText {
    std::vector<std::uint64_t>
        licenseWords;           ///< hashes of the words of the lines that are part of the license
    std::string joinedWords;    ///< all words in lower case, joined by single blanks
    std::size_t wordCount = 0;  ///< all words

    explicit LicenseText(std::string_view text);
};

/// The hash of a word that is in lower case already.
std::uint64_t licenseWordHash(std::string_view lowercaseWord);
/// The hash of a run of words, made by adding one word after the other to 0.
constexpr std::uint64_t withWord(std::uint64_t run, std::uint64_t wordHash) {
    return std::rotl(run, 23) * 0x9E3779B97F4A7C15U + wordHash;
}

}  // namespace ScanKit

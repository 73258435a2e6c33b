#include "ScanKit/Identification/LicenseChoice.h"

#include "ScanKit/Identification/PhraseSet.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ScanKit {
namespace {

/// What says that licenses are a choice. "At your option" alone says it of the versions of one license.
constexpr auto choicePhrases = std::to_array<std::string_view>({
    "dual licensed",
    "dual license",
    "dually licensed",
    "double licensed",
    "triple licensed",
    "tri licensed",
    "multi licensed",
    "licensed under either",
    "licensed under one of",
    "available under either",
    "under either of",
    "under the terms of either",
    "under either the",
    "either of the following licenses",
    "either of these licenses",
    "one of the following licenses",
    "you may choose",
    "you can choose",
    "you may pick",
    "you can pick",
    "at your choice",
    "your choice of",
    "choice of license",
    "choose one license",
    "choose either",
    "choose between",
});
/// A sentence with one of these offers no choice of the package's license: it speaks of a part of it, or denies it, or one of
/// the options is for sale.
constexpr auto exceptingPhrases = std::to_array<std::string_view>({
    "not dual",
    "not dually",
    "example",
    "examples",
    "directory",
    "directories",
    "folder",
    "this file",
    "these files",
    "subdirectory",
    "commercial",
    "enterprise",
    "proprietary",
    "parts",
    "portions",
});
constexpr std::size_t mostChoices = 50;  ///< of one text: no real one offers more than a few
/// The list behind a sentence that ends in a colon, in words.
constexpr std::size_t listLength = 40;
/// A sentence is looked at this far before the phrase, and as far behind it, in words.
constexpr std::size_t longestHalf = 60;

/// What a family is called in prose.
struct NameRow {
    std::string_view family, name;
};
constexpr auto names = std::to_array<NameRow>({
    {"MIT", "mit"},
    {"ISC", "isc"},
    {"Apache-2.0", "apache"},
    {"BSD-2-Clause", "bsd"},
    {"BSD-3-Clause", "bsd"},
    {"Zlib", "zlib"},
    {"MPL-1.1", "mpl"},
    {"MPL-1.1", "mozilla"},
    {"MPL-2.0", "mpl"},
    {"MPL-2.0", "mozilla"},
    {"EPL-2.0", "epl"},
    {"EPL-2.0", "eclipse"},
    {"LGPL-2.1", "lgpl"},
    {"LGPL-2.1", "lesser"},
    {"LGPL-3.0", "lgpl"},
    {"LGPL-3.0", "lesser"},
    {"GPL-2.0", "gpl"},
    {"GPL-2.0", "gplv2"},
    {"GPL-2.0", "gpl2"},
    {"GPL-2.0", "gnu general public license"},
    {"GPL-3.0", "gpl"},
    {"GPL-3.0", "gplv3"},
    {"GPL-3.0", "gpl3"},
    {"GPL-3.0", "gnu general public license"},
    {"AGPL-3.0", "agpl"},
    {"AGPL-3.0", "affero"},
    {"Artistic-2.0", "artistic"},
    {"BSL-1.0", "boost"},
    {"CC0-1.0", "cc0"},
    {"Unlicense", "unlicense"},
    {"Unlicense", "public domain"},
    {"WTFPL", "wtfpl"},
    {"CC-BY-3.0", "cc by 3 0"},
    {"CC-BY-4.0", "cc by 4 0"},
    {"OFL-1.1", "ofl"},
    {"OFL-1.1", "open font license"},
    {"PSF-2.0", "psf"},
    {"Python-2.0", "psf"},
});

/// For each word from `from` to `to` how its sentence ends behind it: at a full stop before a blank, a semicolon, or an empty
/// line; with ':' where a list follows. 0 where it goes on.
std::vector<char> sentenceEnds(const LicenseText& text, std::size_t from, std::size_t to) {
    std::vector<char> ends(text.words.size());
    std::size_t word = 0;
    for (std::size_t line = 0; line < text.lines.size() && word < to; ++line) {
        if (text.lines[line].wordsEnd <= from) {
            word = text.lines[line].wordsEnd;
            continue;
        }
        const std::string_view bytes = text.lines[line].bytes;
        const std::vector<std::string_view> words = Text::words(bytes);
        const bool fits = word + words.size() == text.lines[line].wordsEnd;
        for (std::size_t i = 0; fits && i < words.size(); ++i) {
            const char* behind = words[i].data() + words[i].size();
            const char* next = i + 1 < words.size() ? words[i + 1].data() : bytes.data() + bytes.size();
            const std::string_view between(behind, static_cast<std::size_t>(next - behind));
            const bool isEnd = between.find(';') != std::string_view::npos ||
                               between.find(". ") != std::string_view::npos || between.ends_with('.');
            ends[word + i] = isEnd ? '.' : 0;
        }
        word = text.lines[line].wordsEnd;
        const bool isLast = line + 1 == text.lines.size() || text.lines[line + 1].beginsParagraph;
        if (Text::trimmed(bytes).ends_with(':')) {
            ends[word - 1] = ':';
        } else if (isLast) {
            ends[word - 1] = '.';
        }
    }
    return ends;
}

}  // namespace

std::vector<std::string> licensesNamedIn(std::span<const std::uint64_t> words) {
    static const PhraseSet phrases = phrasesOf(names, &NameRow::name);
    std::vector<std::string> families;
    for (const PhraseSet::Occurrence& one : phrases.occurrences(words)) {
        // Several families may go by one name.
        for (const NameRow& row : names) {
            if (row.name == names[one.phrase].name &&
                std::ranges::find(families, row.family) == families.end()) {
                families.emplace_back(row.family);
            }
        }
    }
    std::ranges::sort(families);
    return families;
}

std::vector<std::vector<std::string>> offeredChoices(const LicenseText& text) {
    static const PhraseSet phrases{choicePhrases};
    static const PhraseSet exceptions{exceptingPhrases};
    std::vector<std::vector<std::string>> choices;
    const std::span<const std::uint64_t> words(text.words);
    for (const PhraseSet::Occurrence& one : phrases.occurrences(words)) {
        if (choices.size() == mostChoices) {
            break;
        }
        const std::vector<char> endsSentence =
            sentenceEnds(text, one.begin - std::min(one.begin, longestHalf), one.end + longestHalf);
        std::size_t begin = one.begin;
        while (begin > 0 && one.begin - begin < longestHalf && endsSentence[begin - 1] == 0) {
            --begin;
        }
        std::size_t end = one.end;
        while (end < words.size() && end - one.end < longestHalf && endsSentence[end - 1] == 0) {
            ++end;
        }
        // The GNU licenses leave a choice of their versions.
        static constexpr std::array<std::string_view, 1> ofVersions{"you may choose any version"};
        static const PhraseSet versions{ofVersions};
        const std::span<const std::uint64_t> sentence = words.subspan(begin, end - begin);
        if (!exceptions.occurrences(sentence).empty() || !versions.occurrences(sentence).empty()) {
            continue;
        }
        std::vector<std::string> named = licensesNamedIn(sentence);
        if (named.size() < 2 && endsSentence[end - 1] == ':') {
            named = licensesNamedIn(words.subspan(begin, std::min(words.size(), end + listLength) - begin));
        }
        choices.push_back(std::move(named));
    }
    return choices;
}

}  // namespace ScanKit

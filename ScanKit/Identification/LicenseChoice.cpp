#include "ScanKit/Identification/LicenseChoice.h"

#include "ScanKit/Identification/PhraseSet.h"

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
/// A choice names its licenses this close to the phrase, in words.
constexpr std::size_t reachBefore = 20;
constexpr std::size_t reachBehind = 50;

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

std::vector<std::vector<std::string>> offeredChoices(std::span<const std::uint64_t> words) {
    static const PhraseSet phrases{choicePhrases};
    static const std::array<std::string_view, 1> versionPhrase{"you may choose any version"};
    static const PhraseSet ofVersions{versionPhrase};
    std::vector<std::vector<std::string>> choices;
    for (const PhraseSet::Occurrence& one : phrases.occurrences(words)) {
        // The GNU licenses leave a choice of their versions.
        if (!ofVersions
                 .occurrences(words.subspan(one.begin, std::min<std::size_t>(5, words.size() - one.begin)))
                 .empty()) {
            continue;
        }
        const std::size_t begin = one.begin - std::min(one.begin, reachBefore);
        const std::size_t end = std::min(words.size(), one.end + reachBehind);
        choices.push_back(licensesNamedIn(words.subspan(begin, end - begin)));
    }
    return choices;
}

}  // namespace ScanKit

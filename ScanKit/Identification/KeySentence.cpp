#include "ScanKit/Identification/KeySentence.h"

#include "ScanKit/Identification/PhraseSet.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

struct KeyRow {
    std::string_view license, words;
};
// Of 1,407 copies of the MIT license in real packages none lacks its sentence, of 131 of the ISC and of 126 of the BSD
// licenses none; one writes "sub-license".
constexpr auto rows = std::to_array<KeyRow>({
    {"MIT",
     "in the software without restriction including without limitation the rights to use copy modify merge publish distribute sublicense and or sell copies of the software"},
    {"MIT",
     "in the software without restriction including without limitation the rights to use copy modify merge publish distribute sub license and or sell copies of the software"},
    {"MIT-0",
     "in the software without restriction including without limitation the rights to use copy modify merge publish distribute sublicense and or sell copies of the software"},
    {"ISC", "for any purpose with or without fee is hereby granted"},
    {"0BSD", "for any purpose with or without fee is hereby granted"},
    {"BSD-2-Clause", "with or without modification are permitted provided that"},
    {"BSD-3-Clause", "with or without modification are permitted provided that"},
    {"Zlib", "for any purpose including commercial applications"},
    {"Unlicense", "for any purpose commercial or non commercial and by any means"},
    {"Apache-2.0",
     "a perpetual worldwide non exclusive no charge royalty free irrevocable copyright license to reproduce"},
});

}  // namespace

bool lacksKeySentence(std::string_view licenseId, std::span<const std::uint64_t> words) {
    static const PhraseSet phrases = phrasesOf(rows, &KeyRow::words);
    const bool hasRow = std::ranges::find(rows, licenseId, &KeyRow::license) != rows.end();
    return hasRow && std::ranges::none_of(phrases.occurrences(words), [&](const PhraseSet::Occurrence& one) {
               return rows[one.phrase].license == licenseId;
           });
}

}  // namespace ScanKit

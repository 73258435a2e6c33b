#include "ScanKit/Identification/LookAlikes.h"

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/PhraseSet.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

enum class MatchedBy { fullText, notice };

struct LookAlikeRow {
    std::string_view matched;
    MatchedBy by;
    std::string_view words;
    std::string_view readsAs;
};

using enum MatchedBy;
constexpr std::string_view anyGpl = "GPL*";  ///< GPL, GPL-2.0 or GPL-3.0, with or without -or-later

// The first row that applies counts.
constexpr auto rows = std::to_array<LookAlikeRow>({
    {"GPL-3.0", fullText, "this license refers to version 3 of the gnu affero general public license",
     "AGPL-3.0"},
    {"GPL-3.0", fullText, "server side public license", "SSPL-1.0"},
    {"LGPL-2.1", fullText, "terms of this library general public license", "LGPL-2.0"},
    {"BSD-2-Clause", fullText, "openssl toolkit", "OpenSSL"},
    {"BSD-3-Clause", fullText, "openssl toolkit", "OpenSSL"},
    {"BSD-2-Clause", fullText, "developed by the apache software foundation", "Apache-1.1"},
    {"BSD-3-Clause", fullText, "developed by the apache software foundation", "Apache-1.1"},
    {"BSD-2-Clause", fullText, "all advertising materials mentioning features or use of this software",
     "BSD-4-Clause"},
    {"BSD-3-Clause", fullText, "all advertising materials mentioning features or use of this software",
     "BSD-4-Clause"},
    {"BSD-2-Clause", fullText, "no express or implied licenses to any party s patent rights",
     "BSD-3-Clause-Clear"},
    {"BSD-3-Clause", fullText, "no express or implied licenses to any party s patent rights",
     "BSD-3-Clause-Clear"},
    {"MIT", fullText, "x consortium", "X11"},
    {"ISC", fullText, "appear in supporting documentation", "HPND"},
    {"MIT", notice, "sil open font license version 1 1", "OFL-1.1"},
    {"MIT", notice, "unicode license v3", "Unicode-3.0"},
    {"MIT", notice, "unicode inc license agreement data files and software", "Unicode-DFS-2016"},
    {anyGpl, notice, "eclipse public license v 2 0", "EPL-2.0"},
    {anyGpl, notice, "python software foundation license version 2", "Python-2.0"},
});

struct DerivedRow {
    std::string_view matched;  ///< how the id begins
    std::string_view words;
};
constexpr auto derivedRows = std::to_array<DerivedRow>({
    {"CC-BY-", "attribution noncommercial"},
    {"CC-BY-", "attribution noderivs"},
    {"CC-BY-", "attribution noderivatives"},
    {"CC-BY-", "attribution sharealike"},
    {"Apache-2.0", "educational community license"},
    {"Apache-2.0", "solderpad hardware license"},
    {"Apache-1.1", "all advertising materials mentioning features or use of this software"},
});

constexpr auto gplNotices =
    std::to_array<std::string_view>({"GPL", "GPL-2.0", "GPL-2.0-or-later", "GPL-3.0", "GPL-3.0-or-later"});

/// A phrase says something only behind the match that it belongs to: many texts mention the Eclipse license.
bool isAbout(const LookAlikeRow& row, const TextMatch& match) {
    if ((row.by == notice) != match.byNotice) {
        return false;
    }
    return row.matched == anyGpl ? std::ranges::find(gplNotices, match.id) != gplNotices.end()
                                 : row.matched == match.id;
}

}  // namespace

std::optional<std::string_view> lookAlikeOf(const TextMatch& match, std::string_view joinedWords) {
    for (const LookAlikeRow& row : rows) {
        if (isAbout(row, match) && holdsWords(joinedWords, row.words)) {
            return row.readsAs;
        }
    }
    return std::nullopt;
}

bool isDerivedLicense(std::string_view matchedId, std::span<const std::uint64_t> words) {
    static const PhraseSet phrases = phrasesOf(derivedRows, &DerivedRow::words);
    return std::ranges::any_of(phrases.occurrences(words), [&](const PhraseSet::Occurrence& one) {
        return matchedId.starts_with(derivedRows[one.phrase].matched);
    });
}

}  // namespace ScanKit

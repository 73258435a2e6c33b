#include "ScanKit/Identification/OwnTerms.h"

#include "ScanKit/Identification/PhraseSet.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace ScanKit {
namespace {

// clang-format off
/// Any of these, as whole words, sets terms.
constexpr auto termPhrases = std::to_array<std::string_view>({
    // What is asked
    "must", "shall", "required to", "requires that", "need to obtain", "need a license", "is required", "are required", "you agree", "agree to", "agrees to",
    "have agreed", "be bound by", "by using", "by use of", "by downloading", "by installing", "provided that", "on condition that",
    "on the condition", "under the condition", "under the conditions", "following conditions", "following restrictions",
    "subject to", "conditional on",
    "acknowledgment shall", "acknowledgement shall", "acknowledgment must", "acknowledgement must",
    // What is forbidden
    "may not be used", "may not be sold", "may not be copied", "may not be distributed", "may not be redistributed",
    "may not be modified", "may not be removed", "may not be reproduced", "may not be included", "may not be resold",
    "may not use", "may not sell", "may not copy", "may not distribute", "may not redistribute", "may not modify",
    "may not remove", "may not reproduce", "may not sublicense", "may not resell", "may not reverse", "may not charge",
    "not designed for use", "may not be called", "may not appear", "nor may", "may not provide", "may not make", "may not offer", "may not publish", "may not create",
    "not to be used", "not be used", "not be sold", "not for sale", "cannot be used", "can not be used", "cannot use",
    "prohibited", "prohibits", "forbidden", "not permitted", "not allowed", "not authorized", "not authorised", "not licensed",
    "no right", "no rights under", "no rights are", "have no rights", "no license is granted", "not grant", "does not include the right", "right to sell",
    "not for commercial", "do not use", "do not redistribute", "do not distribute", "all rights not expressly",
    // For whom and for what
    "may only", "only be used", "use only", "only for", "only with", "only in connection", "only within", "solely", "exclusively for",
    "non commercial", "noncommercial", "commercial use", "commercial purposes", "commercial usage", "for commercial",
    "personal use", "private use", "internal use", "internal business", "evaluation", "trial period", "educational use",
    "educational purposes", "education only", "academic use", "academic purposes", "research use", "research purposes only",
    "good not evil", "military", "nuclear", "weapon", "weapons", "surveillance", "competing", "competitive use", "production use",
    "restricted", "restriction", "restrictions",
    "licensed application",
    // What it costs
    "fee", "fees", "royalty", "royalties", "purchase", "purchased", "subscription", "license key", "paid license",
    // Other agreements
    "terms of service", "terms of use", "terms and conditions", "terms conditions", "license agreement", "licence agreement", "eula",
    "end user", "this agreement", "tos", "commons clause", "proprietary", "confidential", "trade secret", "trade secrets",
    "non transferable", "nontransferable", "revocable", "terminate", "terminates", "terminated", "termination",
    "written permission", "prior permission", "express permission", "permission of", "permission from", "without permission",
    "written consent", "prior consent", "consent of", "written authorization", "contact us for", "permission is required",
    "reverse engineer", "reverse engineering", "decompile", "at its discretion", "at our discretion", "sole discretion",
    "commercial license", "commercial licenses", "commercial licence", "commercial version", "paid plan", "paid version", "closed source",
    "not open source", "source available", "business source", "elastic license", "polyform", "server side public",
    "sustainable use", "functional source", "change date", "by nc", "noderivs", "noderivatives", "unlicensed",
    // Who may, and how much
    "for profit", "nonprofit", "non profit", "businesses", "companies", "revenue", "turnover", "per year", "seat", "seats", "buy", "bought",
    "pricing", "sold separately", "enterprise", "subsidiaries", "students", "educational", "internally", "natural persons",
    "hosted service", "managed service", "as a service", "saas", "compete", "competes", "competitor", "competitors",
    "human rights", "law enforcement", "machine learning", "artificial intelligence", "ai training", "data mining",
    "revoked", "withdrawn", "has to", "needs to", "can t sell", "you can t", "you will not", "will not be used", "does not extend", "do not extend",
    "badge", "watermark", "label your", "mandatory", "postcard", "strictly prohibited", "no part", "illegal", "same license", "same terms",
    // In other languages
    "lizenz", "gewerbliche", "gewerblichen", "nutzung", "verboten", "commerciale", "commerciales", "interdit", "interdite", "comercial",
    "prohibido", "коммерческое", "коммерческих", "商业", "商用", "禁止",
});

/// Those of them that need no sentence around.
constexpr auto strongPhrases = std::to_array<std::string_view>({
    "non commercial", "noncommercial", "nonprofit", "commercial use", "commercial purposes", "for commercial",
    "excluding commercial", "personal use", "private use", "internal use", "for students", "any student", "educational purposes",
    "universities", "university use", "for evaluation", "evaluation", "research purposes", "academic", "military", "nuclear", "weapons",
    "revocable", "revoked", "for a charge", "for a fee of", "prohibited", "forbidden", "must not be sold", "may not be sold", "not be sold", "no ai training",
    "no data mining", "without modification are", "hosted service", "employees", "proprietary", "unlicensed", "good not evil",
});

/// These hold a word of the list above and ask nothing, or nothing that a known license does not ask.
constexpr auto harmlessPhrases = std::to_array<std::string_view>({
    "no event shall", "event shall", "shall not be liable", "shall not be held liable", "shall have no liability",
    "shall be liable", "shall be held liable", "shall govern",
    "no restrictions", "no restriction", "without restriction", "without restrictions", "without any restriction",
    "without any restrictions", "any restriction", "not restricted", "unrestricted", "commercial or non commercial",
    "commercial and non commercial", "non commercial or commercial", "noncommercial or commercial", "commercial or noncommercial",
    "commercial and noncommercial", "use for commercial", "used for commercial", "it for commercial", "them for commercial",
    "for commercial projects", "for commercial or", "for commercial and",
    "without fee", "without a fee", "no fee", "royalty free", "no royalty", "no royalties", "fee or royalty", "irrevocable",
    "you may not use this file except in compliance with the license", "conditions of any kind",
    "required by applicable law or agreed to in writing", "agreed to in writing", "subject to the terms",
    "subject to the following license", "subject to the following licenses", "subject to the same license",
    "subject to their own", "subject to their respective", "subject to its own", "may be subject to",
    "used with permission", "by permission of", "with permission of", "with the permission of", "with permission from",
    "with the permission from", "their express permission", "by using a", "by using the",
    "terms and conditions for copying distribution and modification",
    "terms and conditions for accessing",
    "you agree that your", "agree that your contribution", "agree that your contributions", "agrees that their",
    "shall be governed by", "few restrictions", "without paying a fee", "no fee is required", "no fees",
    "commercial purposes educational purposes", "non profit organization created", "license agreement bsd license",
    "neither the name", "software license agreement",
});
// clang-format on

/// "must" and "shall" ask nothing new beside these: each known license keeps its notices, and refuses to be liable.
constexpr auto customaryPhrases = std::to_array<std::string_view>({
    "copyright notice",
    "copyright notices",
    "this notice",
    "permission notice",
    "above copyright",
    "warranty",
    "warranties",
    "liable",
    "liability",
    "responsible",
    "responsibility",
    "obligation",
    "obligations",
    "governed by",
});
constexpr std::size_t customaryReach = 10;  ///< words around "must" or "shall"

/// Whether it is "must" or "shall" beside what is customary; `words` are those of the whole text.
bool isCustomary(const PhraseSet::Occurrence& term, std::span<const std::uint64_t> words) {
    static const PhraseSet customary{customaryPhrases};
    const std::string_view phrase = termPhrases[term.phrase];
    if (phrase != "must" && phrase != "shall") {
        return false;
    }
    const std::size_t begin = term.begin - std::min(term.begin, customaryReach);
    const std::size_t end = std::min(words.size(), term.end + customaryReach);
    return !customary.occurrences(words.subspan(begin, end - begin)).empty();
}

/// The occurrences that do not stand within a phrase that is harmless.
std::vector<PhraseSet::Occurrence> unexcused(const PhraseSet& phrases, std::span<const std::uint64_t> words) {
    static const PhraseSet harmless{harmlessPhrases};
    std::vector<PhraseSet::Occurrence> found = phrases.occurrences(words);
    if (found.empty()) {
        return found;
    }
    const std::vector<PhraseSet::Occurrence> excuses = harmless.occurrences(words);
    std::erase_if(found, [&](const PhraseSet::Occurrence& one) {
        return std::ranges::any_of(excuses, [&](const PhraseSet::Occurrence& excuse) {
            return excuse.begin <= one.begin && one.end <= excuse.end;
        });
    });
    return found;
}

}  // namespace

bool setsTerms(std::span<const std::uint64_t> words, std::size_t begin, std::size_t end) {
    static const PhraseSet terms{termPhrases};
    return std::ranges::any_of(unexcused(terms, words.subspan(begin, end - begin)),
                               [&](PhraseSet::Occurrence term) {
                                   term.begin += begin;
                                   term.end += begin;
                                   return !isCustomary(term, words);
                               });
}

bool restricts(std::span<const std::uint64_t> words) {
    static const PhraseSet strong{strongPhrases};
    return !unexcused(strong, words).empty();
}

}  // namespace ScanKit

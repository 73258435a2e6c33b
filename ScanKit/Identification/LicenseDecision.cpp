#include "ScanKit/Identification/LicenseDecision.h"

#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Identification/TextSet.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace ScanKit {
namespace {

using Readings = std::vector<std::shared_ptr<const TextReading>>;
using Match = TextReading::Match;

/// Identifiers without a version or a clause count, and how the ids begin that they agree with.
constexpr auto bareFamilies = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"GPL", "GPL-"},
    {"LGPL", "LGPL-"},
    {"BSD", "BSD-"},
});

/// A declared license and one that its text comes with, or without, in other copies: Python's own license is the first of a
/// stack of four, and both the first and the stack go by either name.
constexpr auto stacks = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"PSF-2.0", "Python-2.0"},
    {"Python-2.0", "PSF-2.0"},
});

bool isSameFamily(std::string_view declaredId, std::string_view textId) {
    // "GPL-2.0-only" and "GPL-2.0-or-later" share one text, which cannot tell them apart.
    if (SPDX::baseID(declaredId) == SPDX::baseID(textId)) {
        return true;
    }
    if (std::ranges::find(stacks, std::pair(declaredId, textId)) != stacks.end()) {
        return true;
    }
    return std::ranges::any_of(bareFamilies, [&](const auto& family) {
        return declaredId == family.first && textId.starts_with(family.second);
    });
}

std::vector<const Match*> matchesOf(const Readings& readings) {
    std::vector<const Match*> matches;
    for (const auto& reading : readings) {
        for (const Match& match : reading->matches) {
            matches.push_back(&match);
        }
    }
    return matches;
}

/// Whether the LGPL 3.0 stands in these files as the package's own: by its text, or by a notice that is most of its file. A
/// list of third parties that mentions it says nothing about the package.
bool isOwnLgpl(const Readings& readings) {
    return std::ranges::any_of(readings, [](const auto& reading) {
        return std::ranges::any_of(reading->matches, [&](const Match& match) {
            return SPDX::baseID(match.id) == "LGPL-3.0" && (!match.byNotice || !reading->isMostlyRemainder());
        });
    });
}

/// The families that the files offer as a choice; none, or two and more.
std::vector<std::string> offeredFamilies(const Readings& readings, const std::vector<std::string>& families) {
    for (const auto& reading : readings) {
        for (const std::vector<std::string>& choice : reading->choices) {
            std::vector<std::string> named;
            std::ranges::copy_if(families, std::back_inserter(named), [&](const std::string& family) {
                return std::ranges::find(choice, family) != choice.end();
            });
            if (named.size() > 1) {
                return named;
            }
        }
    }
    return {};
}

LicenseExpression allOf(std::vector<LicenseExpression> members) {
    return members.size() == 1 ? std::move(members.front()) : LicenseExpression::allOf(std::move(members));
}

/// The licenses of all matches, the first of each family; one stands alone, several all apply, but for those that the files
/// offer as a choice.
std::optional<LicenseExpression> textExpression(const Readings& readings) {
    std::vector<std::string> families;
    std::vector<LicenseExpression> licenses;
    for (const Match* match : matchesOf(readings)) {
        std::string family = SPDX::baseID(match->id);
        if (std::ranges::find(families, family) == families.end()) {
            families.push_back(std::move(family));
            licenses.push_back(LicenseExpression::license(match->id, match->exception));
        }
    }
    if (licenses.empty()) {
        return std::nullopt;
    }
    const auto isOf = [](const std::vector<std::string>& wanted) {
        return [&wanted](const LicenseExpression& one) {
            return std::ranges::find(wanted, SPDX::baseID(one.id())) != wanted.end();
        };
    };
    std::vector<LicenseExpression> offered;
    const std::vector<std::string> offeredOnes = offeredFamilies(readings, families);
    std::ranges::copy_if(licenses, std::back_inserter(offered), isOf(offeredOnes));
    if (offered.empty()) {
        // The LGPL 3.0 is written as additions to the GPL 3.0 and ships with both texts.
        if (std::ranges::find(families, "LGPL-3.0") != families.end() && isOwnLgpl(readings)) {
            std::erase_if(licenses,
                          [](const LicenseExpression& one) { return SPDX::baseID(one.id()) == "GPL-3.0"; });
        }
        // Nobody said that these are a choice, so the cautious reading is that all apply.
        return allOf(std::move(licenses));
    }
    const auto first = std::ranges::find_if(licenses, isOf(offeredOnes)) - licenses.begin();
    std::erase_if(licenses, isOf(offeredOnes));
    licenses.insert(licenses.begin() + first, LicenseExpression::anyOf(std::move(offered)));
    return allOf(std::move(licenses));
}

/// The name of the text that a license is compared with; the rows without a version have none of this name.
std::optional<std::string_view> templateOf(std::string_view licenseId) {
    const KnownLicense* row = SPDX::lookup(licenseId);
    return row == nullptr ? std::nullopt : std::optional(familyOf(row->id));
}

bool isInFiles(std::string_view licenseId, const Readings& readings) {
    const std::optional<std::string_view> standardText = templateOf(licenseId);
    return std::ranges::any_of(readings, [&](const auto& reading) {
        const bool isMatched = std::ranges::any_of(
            reading->matches, [&](const Match& match) { return isSameFamily(licenseId, match.id); });
        return isMatched || (standardText && reading->holdsStandardText(*standardText));
    });
}

/// Whether a file names the license without its text, beside what it says of others: "icons: CC BY 4.0 License".
bool isNamedInFiles(const LicenseExpression& license, const Readings& readings) {
    return license.kind() == LicenseExpression::Kind::license &&
           std::ranges::any_of(readings, [&](const auto& reading) {
               return std::ranges::find(reading->namedLicenses, SPDX::baseID(license.id())) !=
                      reading->namedLicenses.end();
           });
}

bool agrees(const LicenseExpression& declared, const Readings& readings) {
    const auto memberAgrees = [&](const LicenseExpression& member) { return agrees(member, readings); };
    switch (declared.kind()) {
        case LicenseExpression::Kind::license:
            return isInFiles(declared.id(), readings);
        case LicenseExpression::Kind::allOf:
            // One text at least; the file may send its readers elsewhere for the others.
            return std::ranges::any_of(declared.members(), memberAgrees) &&
                   std::ranges::all_of(declared.members(), [&](const LicenseExpression& member) {
                       return memberAgrees(member) || isNamedInFiles(member, readings);
                   });
        // Packages under a choice often ship one text only.
        case LicenseExpression::Kind::anyOf:
            return std::ranges::any_of(declared.members(), memberAgrees);
    }
    return false;
}

/// True when the match is the text of a declared license that another template happens to fit better.
bool standsIn(const Match& match, const TextReading& reading, const std::vector<std::string>& declaredIds) {
    if (!match.region || match.isLookAlike) {
        return false;
    }
    return std::ranges::any_of(reading.candidates, [&](const LicenseMatcher::Candidate& candidate) {
        return candidate.score >= LicenseMatcher::acceptedScore &&
               LicenseMatcher::overlap(candidate, *match.region) &&
               std::ranges::any_of(declaredIds,
                                   [&](const std::string& id) { return templateOf(id) == candidate.id; });
    });
}

std::vector<std::string> extraLicenses(const LicenseExpression& declared, const LicenseExpression& fromText,
                                       const Readings& readings) {
    const std::vector<std::string> declaredIds = declared.licenseIDs();
    const auto isDeclared = [&](const std::string& id) {
        return std::ranges::any_of(declaredIds,
                                   [&](const std::string& one) { return isSameFamily(one, id); });
    };
    const auto standsAlone = [&](const std::string& id) {
        return std::ranges::any_of(readings, [&](const auto& reading) {
            return std::ranges::any_of(reading->matches, [&](const Match& match) {
                return isSameFamily(id, match.id) && !standsIn(match, *reading, declaredIds);
            });
        });
    };
    std::vector<std::string> extra;
    for (std::string& id : fromText.licenseIDs()) {
        if (!isDeclared(id) && standsAlone(id)) {
            extra.push_back(std::move(id));
        }
    }
    return extra;
}

std::vector<std::string> unplacedParts(const Readings& readings) {
    std::vector<std::string> parts;
    for (const auto& reading : readings) {
        for (const LicenseMatcher::Candidate& candidate : reading->candidates) {
            const bool isPlaced = std::ranges::any_of(reading->matches, [&](const Match& match) {
                return match.region && LicenseMatcher::overlap(*match.region, candidate);
            });
            const bool isNamed = std::ranges::find(parts, candidate.id) != parts.end();
            // Many licenses resemble one of the others by half; only what a report can reproduce is worth a word.
            const bool isStandard = standardLicenseTexts().member(candidate.id) != 0;
            if (isStandard && candidate.score < LicenseMatcher::acceptedScore && !isPlaced && !isNamed) {
                parts.push_back(candidate.id);
            }
        }
    }
    return parts;
}

std::optional<double> lowestScore(const std::vector<const Match*>& matches, bool withNotices) {
    std::optional<double> lowest;
    for (const Match* match : matches) {
        if (match->score && (withNotices || !match->byNotice)) {
            lowest = std::min(*match->score, lowest.value_or(1));
        }
    }
    return lowest;
}

LicenseBasis basisOfText(const std::vector<const Match*>& matches) {
    const bool onlyNotices = std::ranges::all_of(matches, &Match::byNotice);
    return onlyNotices ? LicenseBasis::notice : LicenseBasis::text;
}

bool isCopyleft(const TextReading& reading) {
    return std::ranges::any_of(reading.matches, [](const Match& match) {
        const KnownLicense* row = SPDX::lookup(match.id);
        return row != nullptr && (row->category == LicenseCategory::strongCopyleft ||
                                  row->category == LicenseCategory::networkCopyleft);
    });
}

bool holdsOwnTerms(const TextReading& reading) {
    return reading.remainder.setsTerms || std::ranges::any_of(reading.matches, &Match::isAltered);
}

/// Whether a file may decide where the metadata says something that is no license: its matches account for it, and it holds
/// no terms of its own. A copyleft license decides even so, for to report less would be calm.
bool decidesForUnrecognized(const TextReading& reading) {
    return reading.isUsable() && (!holdsOwnTerms(reading) || !reading.choices.empty() || isCopyleft(reading));
}

/// Whether a file is another license than those that it reads as: their words with terms in between, or an agreement that
/// ends in the licenses of what it bundles.
bool isAnotherLicense(const TextReading& reading) {
    const bool isRewritten = reading.matches.size() == 1 &&
                             (reading.remainder.changesTheLicense || reading.matches.front().isAltered);
    const bool isAgreement = reading.remainder.setsTerms && reading.isMostlyRemainder();
    return (isRewritten || isAgreement) && reading.choices.empty() && !isCopyleft(reading);
}

/// Whether the matches of the files say anything about the package.
bool doFilesCount(const DeclaredLicense& declared, bool agree, const Readings& readings) {
    if (agree) {
        return true;
    }
    if (declared.expression) {
        return std::ranges::any_of(readings, [](const auto& reading) { return reading->isUsable(); });
    }
    if (declared.isUnrecognized) {
        return std::ranges::any_of(readings,
                                   [](const auto& reading) { return decidesForUnrecognized(*reading); });
    }
    // They are the only evidence there is.
    return std::ranges::any_of(readings, [](const auto& reading) {
        return !reading->matches.empty() && !isAnotherLicense(*reading);
    });
}

/// Whether what is written as an exception takes rights away: "Apache-2.0 WITH Commons-Clause".
bool isRestricted(const LicenseExpression& expression) {
    return std::ranges::any_of(expression.leaves(), [](const LicenseExpression* license) {
        return license->exception() && Text::lowercased(*license->exception()).starts_with("commons-clause");
    });
}

/// What the files say beyond their licenses.
void readRemainders(const Readings& readings, LicenseDecision& decision) {
    const bool filesDecide = !decision.declared && decision.chosen;
    const TextReading* told = nullptr;
    for (const auto& reading : readings) {
        const Remainder& remainder = reading->remainder;
        // A copy that grants less than its license is not calm, whatever it says beside.
        decision.isAltered |= std::ranges::any_of(reading->matches, &Match::isAltered);
        decision.holdsUnreadTerms |= decision.isAltered;
        // A file that reads as nothing is noticed by that alone, unless the metadata speaks for the package.
        if (!remainder.isOfSubstance() || (reading->matches.empty() && !remainder.setsTerms)) {
            continue;
        }
        if (told == nullptr || (remainder.setsTerms && !told->remainder.setsTerms)) {
            told = reading.get();
        }
        decision.holdsUnreadTerms |= remainder.setsTerms || (filesDecide && reading->isMostlyRemainder());
    }
    // A text without any license is no more than a standard text.
    if (told != nullptr && (decision.declared || !told->matches.empty())) {
        decision.remainder = told->remainderBeginning;
    }
}

}  // namespace

LicenseDecision decideLicense(const DeclaredLicense& license, const Readings& readings) {
    DeclaredLicense declared = license;
    if (declared.otherReading && agrees(*declared.otherReading, readings)) {
        declared.expression = declared.otherReading;
    }
    LicenseDecision decision{
        .chosen = declared.expression, .basis = declared.basis, .declared = declared.expression};
    const std::vector<const Match*> matches = matchesOf(readings);
    const bool agree = declared.expression && agrees(*declared.expression, readings);
    if (!matches.empty() && doFilesCount(declared, agree, readings)) {
        decision.fromText = textExpression(readings);
        decision.matchScore = lowestScore(matches, true);
        decision.fullTextScore = lowestScore(matches, false);
        if (!declared.expression) {
            decision.chosen = decision.fromText;
            decision.basis = basisOfText(matches);
        } else if (agree) {
            decision.basis = LicenseBasis::metadataAndText;
            decision.extraLicenses = extraLicenses(*declared.expression, *decision.fromText, readings);
            decision.unplacedParts = unplacedParts(readings);
        } else {
            decision.isMismatch = true;
        }
    }
    readRemainders(readings, decision);
    decision.holdsUnreadTerms |=
        declared.isPartlyUnknown || (decision.chosen && isRestricted(*decision.chosen));
    return decision;
}

}  // namespace ScanKit

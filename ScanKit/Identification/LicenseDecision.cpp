#include "ScanKit/Identification/LicenseDecision.h"

#include "ScanKit/Identification/SPDX.h"

#include <algorithm>
#include <array>
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

bool isSameFamily(std::string_view declaredId, std::string_view textId) {
    // "GPL-2.0-only" and "GPL-2.0-or-later" share one text, which cannot tell them apart.
    if (SPDX::baseID(declaredId) == SPDX::baseID(textId)) {
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

/// The licenses of all matches, the first of each family; one stands alone, several all apply.
std::optional<LicenseExpression> textExpression(const std::vector<const Match*>& matches) {
    std::vector<std::string> families;
    std::vector<LicenseExpression> licenses;
    for (const Match* match : matches) {
        std::string family = SPDX::baseID(match->id);
        if (std::ranges::find(families, family) == families.end()) {
            families.push_back(std::move(family));
            licenses.push_back(LicenseExpression::license(match->id));
        }
    }
    // The LGPL 3.0 is written as additions to the GPL 3.0 and ships with both texts.
    if (std::ranges::find(families, "LGPL-3.0") != families.end()) {
        std::erase_if(licenses,
                      [](const LicenseExpression& one) { return SPDX::baseID(one.id()) == "GPL-3.0"; });
    }
    if (licenses.empty()) {
        return std::nullopt;
    }
    // Nobody said that these are a choice, so the cautious reading is that all apply.
    return licenses.size() == 1 ? licenses.front() : LicenseExpression::allOf(std::move(licenses));
}

/// The name of the standard text of a license, or none.
std::optional<std::string_view> templateOf(std::string_view licenseId) {
    const KnownLicense* row = SPDX::lookup(licenseId);
    return row != nullptr ? row->text : std::nullopt;
}

bool isInFiles(std::string_view licenseId, const Readings& readings) {
    const std::optional<std::string_view> standardText = templateOf(licenseId);
    return std::ranges::any_of(readings, [&](const auto& reading) {
        const bool isMatched = std::ranges::any_of(
            reading->matches, [&](const Match& match) { return isSameFamily(licenseId, match.id); });
        return isMatched || (standardText && reading->holdsStandardText(*standardText));
    });
}

bool agrees(const LicenseExpression& declared, const Readings& readings) {
    const auto memberAgrees = [&](const LicenseExpression& member) { return agrees(member, readings); };
    switch (declared.kind()) {
        case LicenseExpression::Kind::license:
            return isInFiles(declared.id(), readings);
        case LicenseExpression::Kind::allOf:
            return std::ranges::all_of(declared.members(), memberAgrees);
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
            if (candidate.score < LicenseMatcher::acceptedScore && !isPlaced && !isNamed) {
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

}  // namespace

LicenseDecision decideLicense(const DeclaredLicense& declared, const Readings& readings) {
    LicenseDecision decision{
        .chosen = declared.expression, .basis = declared.basis, .declared = declared.expression};
    const std::vector<const Match*> matches = matchesOf(readings);
    const bool agree = declared.expression && agrees(*declared.expression, readings);
    // A package that declares terms of its own may end its text with the licenses of what it bundles: such matches decide
    // nothing. With no declaration at all they are the only evidence there is.
    const bool isOnlyEvidence = !declared.expression && !declared.isUnrecognized;
    const auto isUsable = [](const auto& reading) { return reading->isUsable(); };
    const bool countFiles = isOnlyEvidence || agree || std::ranges::any_of(readings, isUsable);
    if (matches.empty() || !countFiles) {
        return decision;
    }
    // From here on the files count: whether they confirm, contradict or decide.
    decision.fromText = textExpression(matches);
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
    return decision;
}

}  // namespace ScanKit

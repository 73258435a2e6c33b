#include "ScanKit/Identification/TextReading.h"

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/LookAlikes.h"

#include <algorithm>

namespace ScanKit {
namespace {

constexpr double worthNamingScore = 0.5;  ///< below this a candidate is no part of the text at all
constexpr std::size_t mostWordsOfAShortText = 500;
constexpr double usableCoverage = 0.5;

/// Makes a text with one match read as the license it really is.
void applyLookAlike(TextReading& reading, std::string_view joinedWords) {
    // With several matches the phrase may stand in the part of another one.
    if (reading.matches.size() != 1) {
        return;
    }
    TextReading::Match& match = reading.matches.front();
    if (const auto id = lookAlikeOf({match.id, match.score.value_or(0), match.byNotice}, joinedWords)) {
        match.id = *id;
        match.isLookAlike = true;
        match.score.reset();
    }
}

}  // namespace

bool TextReading::holdsStandardText(std::string_view templateId) const {
    return std::ranges::none_of(matches, &Match::isLookAlike) &&
           std::ranges::any_of(candidates, [&](const LicenseMatcher::Candidate& candidate) {
               return candidate.id == templateId && candidate.score >= LicenseMatcher::acceptedScore;
           });
}

bool TextReading::isUsable() const {
    if (matches.empty()) {
        return false;
    }
    // A long text that mentions the GPL, or ends with a short license for its examples, is another license's text.
    double covered = 0;
    for (const Match& match : matches) {
        if (match.region) {
            covered += static_cast<double>(match.region->wordCount) * match.region->score;
        }
    }
    return wordCount <= mostWordsOfAShortText ||
           covered >= usableCoverage * static_cast<double>(licenseWordCount);
}

TextReading readLicenseText(std::string_view text) {
    const LicenseText words(text);
    TextReading reading{.candidates = LicenseMatcher::candidates(words),
                        .wordCount = words.wordCount,
                        .licenseWordCount = words.licenseWords.size()};
    for (const LicenseMatcher::Candidate& candidate : LicenseMatcher::accepted(reading.candidates)) {
        reading.matches.push_back({.id = candidate.id, .score = candidate.score, .region = candidate});
    }
    if (reading.matches.empty()) {
        if (const std::optional<TextMatch> notice = LicenseMatcher::noticeMatch(words)) {
            reading.matches.push_back({.id = notice->id, .byNotice = true, .score = notice->score});
        }
    }
    applyLookAlike(reading, words.joinedWords);
    std::erase_if(reading.candidates,
                  [](const auto& candidate) { return candidate.score < worthNamingScore; });
    std::ranges::stable_sort(reading.candidates, {}, &LicenseMatcher::Candidate::start);
    return reading;
}

std::shared_ptr<const TextReading> TextReadings::of(const std::string& text) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = readings_.find(text); found != readings_.end()) {
            return found->second;
        }
    }
    // Read outside the lock: two threads may read the same text at the same time, and get the same reading.
    auto reading = std::make_shared<const TextReading>(readLicenseText(text));
    const std::lock_guard lock(mutex_);
    return readings_.emplace(text, std::move(reading)).first->second;
}

}  // namespace ScanKit

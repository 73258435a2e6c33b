#include "ScanKit/Identification/TextReading.h"

#include "ScanKit/Identification/KeySentence.h"
#include "ScanKit/Identification/KnownLicense.h"
#include "ScanKit/Identification/LicenseChoice.h"
#include "ScanKit/Identification/LicenseException.h"
#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/LookAlikes.h"
#include "ScanKit/Identification/Markup.h"
#include "ScanKit/Identification/PhraseSet.h"
#include "ScanKit/Identification/ShortNotice.h"
#include "ScanKit/Identification/TextComparison.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <numeric>

namespace ScanKit {
namespace {

constexpr double worthNamingScore = 0.5;  ///< below this a candidate is no part of the text at all
constexpr std::size_t mostWordsOfAShortText = 500;
constexpr double usableCoverage = 0.5;
constexpr double explainingScore = 0.9;  ///< a text that scores this and says nothing further is that license
/// A text of half a GNU license, or a third, is no notice of another one.
constexpr double partialScore = 0.3;
constexpr std::size_t leastWordsOfAGnuText = 800;
/// What a further license must have of its own, of its words in the text. The MIT license shares more than half of its words
/// with the Open Font License.
constexpr double ownShare = 0.2;
constexpr std::size_t mostWordsOfAName = 60;  ///< of a text that says no more than which license it is
constexpr std::size_t versionReach = 40;      ///< words behind a license's name that may say its version
constexpr double leastDifference = 8;         ///< in words: nearer by less is not nearer

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

/// What the matcher says of the text, and the look-alikes.
TextReading asStandardTexts(const LicenseText& words) {
    TextReading reading{.candidates = LicenseMatcher::candidates(words),
                        .wordCount = words.words.size(),
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
    return reading;
}

/// The words that the text has in common with a license, less those that it would lack of it.
double gain(const LicenseMatcher::Candidate& candidate) {
    return static_cast<double>(candidate.wordCount) * (2 * candidate.score - 1);
}

/// The text compared by all its words with those of all known licenses.
TextReading asNearestTexts(const LicenseText& words, TextComparison& comparison) {
    TextReading reading{.candidates = comparison.candidates(),
                        .wordCount = words.words.size(),
                        .licenseWordCount = words.licenseWords.size()};
    std::ranges::stable_sort(reading.candidates, std::greater{}, gain);
    WordMarks taken(words.words.size());
    for (const LicenseMatcher::Candidate& candidate : reading.candidates) {
        if (candidate.score < LicenseMatcher::acceptedScore) {
            continue;
        }
        // Some licenses hold another one nearly whole: what is theirs already makes no further license.
        const WordMarks covered = comparison.marksOf(candidate.id);
        const auto all = std::ranges::count(covered, 1);
        const auto shared = std::transform_reduce(covered.begin(), covered.end(), taken.begin(),
                                                  std::ptrdiff_t{0}, std::plus<>{}, std::logical_and<>{});
        if (static_cast<double>(all - shared) >= ownShare * static_cast<double>(all)) {
            reading.matches.push_back({.id = candidate.id, .score = candidate.score, .region = candidate});
            std::transform(covered.begin(), covered.end(), taken.begin(), taken.begin(), std::logical_or<>{});
        }
    }
    std::ranges::stable_sort(reading.matches, {},
                             [](const auto& match) { return match.region ? match.region->start : 0; });
    return reading;
}

/// True when nothing is gained by comparing with further licenses.
bool isExplained(const TextReading& reading) {
    return reading.remainder.passages.empty() && !reading.matches.empty() &&
           std::ranges::all_of(reading.matches, [](const TextReading::Match& match) {
               return match.region && match.score.value_or(0) >= explainingScore;
           });
}

/// The words that the text says beyond its licenses, and those that it lacks of them.
double distance(const TextReading& reading) {
    auto words = static_cast<double>(reading.remainder.wordCount);
    for (const TextReading::Match& match : reading.matches) {
        if (match.region && match.score) {
            words += static_cast<double>(match.region->wordCount) * (1 - *match.score);
        }
    }
    return words;
}

/// Whether the second reading of a text takes the place of the first.
bool isNearer(const TextReading& second, const TextReading& first) {
    if (second.matches.empty()) {
        return false;
    }
    // A license's own text says more than a notice in it.
    const bool hasFullText = std::ranges::any_of(
        first.matches, [](const TextReading::Match& match) { return match.region.has_value(); });
    if (!hasFullText) {
        return true;
    }
    const bool namesTheSame = std::ranges::equal(second.matches, first.matches, {}, &TextReading::Match::id,
                                                 &TextReading::Match::id);
    return !namesTheSame && distance(second) + leastDifference <= distance(first);
}

/// Adds the exception that the text states, if any, to the license it belongs to, and marks its words.
bool applyException(TextReading& reading, const LicenseText& text, WordMarks& covered) {
    const std::optional<StatedException> stated = exceptionIn(text.words);
    if (!stated) {
        return false;
    }
    const LicenseException& exception = *stated->exception;
    const auto match = std::ranges::find_if(
        reading.matches, [&](const auto& one) { return one.id.starts_with(exception.family); });
    if (match == reading.matches.end()) {
        return false;
    }
    match->exception = std::string(exception.id);
    const std::size_t begin = stated->at - std::min(stated->at, exception.longest);
    const std::size_t end = std::min(covered.size(), stated->at + exception.longest);
    std::fill(covered.begin() + static_cast<std::ptrdiff_t>(begin),
              covered.begin() + static_cast<std::ptrdiff_t>(end), true);
    return true;
}

/// Marks the words that stand in what the text reads as.
WordMarks marksOf(const TextReading& reading, TextComparison& comparison) {
    std::vector<std::string_view> ids;
    for (const TextReading::Match& match : reading.matches) {
        ids.push_back(match.id);
    }
    std::vector<std::string_view> held;
    for (const LicenseMatcher::Candidate& candidate : reading.candidates) {
        if (candidate.score >= LicenseMatcher::acceptedScore) {
            held.push_back(candidate.id);
        }
    }
    return comparison.marksOfReading(ids, held);
}

/// Fills in what the text says beyond its matches.
void readRemainder(TextReading& reading, const LicenseText& text, TextComparison& comparison) {
    WordMarks covered = marksOf(reading, comparison);
    reading.remainder = remainderOf(text, covered);
    if (!reading.remainder.passages.empty() && applyException(reading, text, covered)) {
        reading.remainder = remainderOf(text, covered);
    }
}

/// Some licenses are another one's text under a name of their own, with a few words changed.
void dropDerivedLicense(TextReading& reading, const LicenseText& text, TextComparison& comparison) {
    const auto isDerived = [&](const TextReading::Match& match) {
        return match.region && isDerivedLicense(match.id, text.words);
    };
    if (std::erase_if(reading.matches, isDerived) > 0) {
        readRemainder(reading, text, comparison);
    }
}

/// A short text that offers a choice names each license of it by a notice.
void addNoticesOfAChoice(TextReading& reading, const LicenseText& text) {
    if (reading.choices.empty() || reading.matches.size() != 1 || !reading.matches.front().byNotice ||
        reading.matches.front().isLookAlike) {
        return;
    }
    for (const TextMatch& notice : LicenseMatcher::noticeMatches(text)) {
        if (familyOf(notice.id) != familyOf(reading.matches.front().id)) {
            reading.matches.push_back({.id = notice.id, .byNotice = true, .score = notice.score});
        }
    }
}

/// "LGPL" of "LGPL-2.1"; nothing for a license that is none of the GNU project's.
std::string_view kindOfGnu(std::string_view id) {
    const std::string_view kind = id.substr(0, id.find('-'));
    return kind.ends_with("GPL") ? kind : "";
}

/// The GPL that the words behind its name speak of: "version 2 or any later version".
std::string gnuIdOf(std::span<const std::uint64_t> words) {
    static constexpr auto versions = std::to_array<std::string_view>({"version 3", "v3", "version 2", "v2"});
    static const PhraseSet phrases{versions};
    const std::vector<PhraseSet::Occurrence> found = phrases.occurrences(words);
    if (found.empty()) {
        return "GPL";
    }
    static constexpr std::array<std::string_view, 1> later{"any later version"};
    static const PhraseSet orLater{later};
    const std::string id = found.front().phrase < 2 ? "GPL-3.0" : "GPL-2.0";
    return orLater.occurrences(words).empty() ? id : id + "-or-later";
}

/// Half a GNU license names its sisters as a notice would. What it is a part of says more.
void applyPartOfAText(TextReading& reading, const std::vector<LicenseMatcher::Candidate>& candidates) {
    if (reading.matches.size() != 1 || !reading.matches.front().byNotice) {
        return;
    }
    TextReading::Match& notice = reading.matches.front();
    const auto best = std::ranges::max_element(candidates, {}, &LicenseMatcher::Candidate::score);
    if (best == candidates.end() || best->score < partialScore || best->wordCount < leastWordsOfAGnuText ||
        kindOfGnu(best->id).empty()) {
        return;
    }
    notice.isPart = true;
    if (kindOfGnu(notice.id) != kindOfGnu(best->id)) {
        notice.id = best->id;
        notice.isLookAlike = false;
    }
}

/// A notice of the GPL that also mentions the LGPL, of something else, is one of the GPL: what it names first is its own.
void applyFirstGnuNotice(TextReading& reading, const LicenseText& text) {
    if (reading.matches.size() != 1 || !reading.matches.front().byNotice ||
        kindOfGnu(reading.matches.front().id) != "LGPL") {
        return;
    }
    static constexpr auto names =
        std::to_array<std::string_view>({"gnu general public license", "gnu lesser general public license",
                                         "gnu library general public license"});
    static const PhraseSet phrases{names};
    const std::vector<PhraseSet::Occurrence> found = phrases.occurrences(text.words);
    if (found.empty() || found.front().phrase != 0) {
        return;
    }
    const std::size_t length = std::min(versionReach, text.words.size() - found.front().end);
    reading.matches.front().id = gnuIdOf(std::span(text.words).subspan(found.front().end, length));
}

/// A short text that says no more than a license's name, or has a tag of it, is a notice of that license.
void addNamesOfAShortText(TextReading& reading, const LicenseText& text) {
    if (!reading.matches.empty()) {
        return;
    }
    const TaggedLicenses tagged = taggedLicenses(text.bytes);
    for (const std::string& id : tagged.ids) {
        reading.matches.push_back({.id = id, .byNotice = true, .score = LicenseMatcher::noticeScore});
    }
    if (tagged.isChoice) {
        std::vector<std::string>& families = reading.choices.emplace_back();
        std::ranges::transform(tagged.ids, std::back_inserter(families),
                               [](const std::string& id) { return std::string(familyOf(id)); });
    }
    if (reading.matches.empty() && text.words.size() <= mostWordsOfAName) {
        if (const auto id = gnuNameIn(text.words)) {
            reading.matches.push_back(
                {.id = std::string(*id), .byNotice = true, .score = LicenseMatcher::noticeScore});
        }
    }
}

/// A copy of a license that grants less is not that license.
void markAltered(TextReading& reading, const LicenseText& text) {
    for (TextReading::Match& match : reading.matches) {
        match.isAltered = match.region && lacksKeySentence(match.id, text.words);
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
    if (std::ranges::any_of(matches, &Match::isPart)) {
        return true;
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

bool TextReading::isMostlyRemainder() const {
    return remainder.isOfSubstance() && 2 * remainder.wordCount > wordCount;
}

TextReading readLicenseText(const LicenseText& words) {
    TextComparison comparison(words);
    TextReading reading = asStandardTexts(words);
    readRemainder(reading, words, comparison);
    if (!isExplained(reading)) {
        TextReading nearer = asNearestTexts(words, comparison);
        readRemainder(nearer, words, comparison);
        if (isNearer(nearer, reading)) {
            reading = std::move(nearer);
        } else {
            applyPartOfAText(reading, nearer.candidates);
            applyFirstGnuNotice(reading, words);
            addNamesOfAShortText(reading, words);
        }
        dropDerivedLicense(reading, words, comparison);
        std::ranges::move(offeredChoices(words), std::back_inserter(reading.choices));
        reading.namedLicenses = licensesNamedIn(words.words);
        addNoticesOfAChoice(reading, words);
        reading.remainderBeginning = beginningOf(reading.remainder, words);
    }
    markAltered(reading, words);
    std::erase_if(reading.candidates,
                  [](const auto& candidate) { return candidate.score < worthNamingScore; });
    std::ranges::stable_sort(reading.candidates, {}, &LicenseMatcher::Candidate::start);
    return reading;
}

TextReading readLicenseText(std::string_view text) {
    if (isMarkup(text)) {
        return readLicenseText(LicenseText(withoutMarkup(text)));
    }
    return readLicenseText(LicenseText(text));
}

std::vector<std::string_view> partsBeyondLicenses(std::string_view text) {
    const LicenseText words(text);
    const TextReading reading = readLicenseText(words);
    return reading.matches.empty() ? std::vector<std::string_view>() : partsOf(reading.remainder, words);
}

std::shared_ptr<const TextReading> TextReadings::of(SharedText& text) {
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = readings_.find(*text); found != readings_.end()) {
            text = found->second.text;
            return found->second.reading;
        }
    }
    // Read outside the lock: two threads may read the same text at the same time, and get the same reading.
    auto reading = std::make_shared<const TextReading>(readLicenseText(*text));
    const std::lock_guard lock(mutex_);
    const Known& known = readings_.try_emplace(*text, Known{text, std::move(reading)}).first->second;
    text = known.text;
    return known.reading;
}

}  // namespace ScanKit

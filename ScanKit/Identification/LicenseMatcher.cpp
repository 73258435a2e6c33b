#include "ScanKit/Identification/LicenseMatcher.h"

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/TextSet.h"
#include "ScanKit/Licenses/LicenseTexts.h"

#include <algorithm>
#include <array>

#include <string.h>  // memmem

namespace ScanKit::LicenseMatcher {
namespace {

constexpr double equalScores = 0.005;         ///< scores this close count as equal
constexpr double replacingScore = 0.82;       ///< what a longer license must score to replace a shorter one
constexpr double replacingLength = 1.1;       ///< and how many times longer it must be
constexpr double replacingDifference = 0.08;  ///< and how far its score may lie below

bool comesBefore(const Candidate& a, const Candidate& b) {
    const double difference = a.score - b.score;
    if (difference > equalScores || difference < -equalScores) {
        return difference > 0;
    }
    return a.wordCount > b.wordCount;
}

/// An insertion sort: `comesBefore` is not transitive, so the order is the one that this walk yields.
void sortByScore(std::vector<Candidate>& candidates) {
    for (std::size_t i = 1; i < candidates.size(); ++i) {
        for (std::size_t j = i; j > 0 && comesBefore(candidates[j], candidates[j - 1]); --j) {
            std::swap(candidates[j], candidates[j - 1]);
        }
    }
}

/// A longer license that matches nearly as well wins over a shorter one whose words it shares.
bool replaces(const Candidate& longer, const Candidate& shorter) {
    return longer.score >= replacingScore &&
           static_cast<double>(shorter.wordCount) * replacingLength < static_cast<double>(longer.wordCount) &&
           shorter.score - longer.score < replacingDifference;
}

/// What a notice may say, in the order of trial. "licensed under the apache license version 2 0" needs no row of
/// its own: it ends in one.
struct NoticeRow {
    std::string_view phrase, id;
};
constexpr auto plainNotices = std::to_array<NoticeRow>({
    {"apache license version 2 0", "Apache-2.0"},
    {"mozilla public license v 2 0", "MPL-2.0"},
    {"mozilla public license version 2 0", "MPL-2.0"},
    {"boost software license version 1 0", "BSL-1.0"},
    {"eclipse public license v 2 0", "EPL-2.0"},
    {"eclipse public license version 2 0", "EPL-2.0"},
    {"permission is hereby granted free of charge to any person obtaining a copy", "MIT"},
    {"redistribution and use in source and binary forms with or without modification are permitted", "BSD"},
    {"this is free and unencumbered software released into the public domain", "Unlicense"},
});

/// memmem is several times faster over a long text than the standard library's search.
bool holds(std::string_view words, std::string_view phrase) {
    return memmem(words.data(), words.size(), phrase.data(), phrase.size()) != nullptr;
}

/// The GNU licenses, whose notices also say a version and whether later ones may be used.
std::optional<std::string> gnuNotice(std::string_view words) {
    // Nearly all texts end here, without the searches below.
    if (!holds(words, "general public license")) {
        return std::nullopt;
    }
    const auto orLater = [&](std::string id) {
        return holds(words, "any later version") ? id + "-or-later" : id;
    };
    if (holds(words, "gnu affero general public license")) {
        return orLater("AGPL-3.0");
    }
    if (holds(words, "gnu lesser general public license") ||
        holds(words, "gnu library general public license")) {
        if (holds(words, "version 3")) {
            return orLater("LGPL-3.0");
        }
        if (holds(words, "version 2 1")) {
            return orLater("LGPL-2.1");
        }
        return holds(words, "version 2") ? orLater("LGPL-2.0") : "LGPL";
    }
    if (holds(words, "gnu general public license")) {
        if (holds(words, "version 3")) {
            return orLater("GPL-3.0");
        }
        return holds(words, "version 2") ? orLater("GPL-2.0") : "GPL";
    }
    return std::nullopt;
}

}  // namespace

const std::vector<Template>& templates() {
    static const std::vector<Template> built = [] {
        std::vector<Template> made;
        for (const std::string_view id : standardLicenseTexts().ids()) {
            const std::vector<std::string> words = licenseWords(standardText(id).value());
            made.push_back({std::string(id), shingles(words, TextSet::shingleLength), words.size()});
        }
        return made;
    }();
    return built;
}

std::vector<std::string> licenseWords(std::string_view text) {
    std::vector<std::string> words;
    forEachLicenseLine(text, [&](const LicenseLine& line) {
        if (line.isPartOfLicense) {
            for (const LicenseWord& word : line.words) {
                words.push_back(word.lowercased());
            }
        }
    });
    return words;
}

std::unordered_set<std::uint64_t> shingles(const std::vector<std::string>& words, std::size_t length) {
    std::unordered_set<std::uint64_t> hashes;
    const std::size_t run = words.size() < length ? 1 : length;
    for (std::size_t i = 0; i + run <= words.size(); ++i) {
        std::uint64_t hash = 0;
        for (std::size_t j = i; j < i + run; ++j) {
            hash = withWord(hash, licenseWordHash(words[j]));
        }
        hashes.insert(hash);
    }
    return hashes;
}

std::vector<Candidate> candidates(std::string_view text) {
    return candidates(LicenseText(text));
}

std::vector<Candidate> candidates(const LicenseText& text) {
    if (text.licenseWords.size() < TextSet::shingleLength) {
        return {};
    }
    std::vector<Candidate> scored = standardLicenseTexts().candidates(text.licenseWords);
    sortByScore(scored);
    return scored;
}

bool overlap(const Candidate& a, const Candidate& b) {
    const auto position = [](std::size_t value) { return static_cast<double>(value); };
    const double shared = position(std::min(a.end, b.end)) - position(std::max(a.start, b.start));
    const double shorter = std::min(position(a.end) - position(a.start), position(b.end) - position(b.start));
    return shared / (shorter < 2 ? 1 : shorter) > 0.5;
}

std::vector<Candidate> accepted(const std::vector<Candidate>& candidates) {
    std::vector<Candidate> kept;
    for (const Candidate& candidate : candidates) {
        if (candidate.score < acceptedScore) {
            continue;
        }
        const auto rival =
            std::ranges::find_if(kept, [&](const Candidate& one) { return overlap(one, candidate); });
        if (rival == kept.end()) {
            kept.push_back(candidate);
        } else if (replaces(candidate, *rival)) {
            *rival = candidate;
        }
    }
    std::ranges::stable_sort(kept, {}, &Candidate::start);
    return kept;
}

std::vector<TextMatch> matches(std::string_view text) {
    const LicenseText words(text);
    std::vector<TextMatch> found;
    for (const Candidate& candidate : accepted(candidates(words))) {
        found.push_back({candidate.id, candidate.score, false});
    }
    // A full text is stronger than any mention of another license in it.
    if (found.empty()) {
        if (std::optional<TextMatch> notice = noticeMatch(words)) {
            found.push_back(std::move(*notice));
        }
    }
    return found;
}

std::optional<TextMatch> bestMatch(std::string_view text) {
    const std::vector<TextMatch> found = matches(text);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::optional<TextMatch> noticeMatch(std::string_view text) {
    return noticeMatch(LicenseText(text));
}

std::optional<TextMatch> noticeMatch(const LicenseText& text) {
    if (std::optional<std::string> id = gnuNotice(text.joinedWords)) {
        return TextMatch{std::move(*id), noticeScore, true};
    }
    for (const NoticeRow& row : plainNotices) {
        if (holds(text.joinedWords, row.phrase)) {
            return TextMatch{std::string(row.id), noticeScore, true};
        }
    }
    return std::nullopt;
}

std::vector<TextMatch> noticeMatches(const LicenseText& text) {
    std::vector<TextMatch> found;
    if (std::optional<std::string> id = gnuNotice(text.joinedWords)) {
        found.push_back({std::move(*id), noticeScore, true});
    }
    for (const NoticeRow& row : plainNotices) {
        const bool isFound = std::ranges::find(found, row.id, &TextMatch::id) != found.end();
        if (!isFound && holds(text.joinedWords, row.phrase)) {
            found.push_back({std::string(row.id), noticeScore, true});
        }
    }
    return found;
}

}  // namespace ScanKit::LicenseMatcher

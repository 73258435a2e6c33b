#include "ScanKit/Identification/LicenseMatcher.h"

#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Licenses/StandardTextNames.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include <string.h>  // memmem

namespace ScanKit::LicenseMatcher {
namespace {

constexpr std::size_t shingleLength = 3;
constexpr double equalScores = 0.005;         ///< scores this close count as equal
constexpr double replacingScore = 0.82;       ///< what a longer license must score to replace a shorter one
constexpr double replacingLength = 1.1;       ///< and how many times longer it must be
constexpr double replacingDifference = 0.08;  ///< and how far its score may lie below

using WordHashes = std::vector<std::uint64_t>;

std::uint64_t shingleAt(const WordHashes& words, std::size_t position) {
    return withWord(withWord(withWord(0, words[position]), words[position + 1]), words[position + 2]);
}

Template templateOf(std::string_view id, std::string_view text) {
    const WordHashes words = LicenseText(text).licenseWords;
    Template made{.id = std::string(id), .wordCount = words.size()};
    for (std::size_t i = 0; i + shingleLength <= words.size(); ++i) {
        made.shingles.insert(shingleAt(words, i));
    }
    return made;
}

/// All shingles of all templates in one open-addressed table, so that one look at a shingle says which
/// templates hold it.
class ShingleTable {
public:
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t number = 0;     ///< of the shingle, from 1; 0 marks a free slot
        std::uint32_t templates = 0;  ///< bit i is set when template i holds it
    };
    static constexpr std::size_t mostTemplates = std::numeric_limits<decltype(Entry::templates)>::digits;

    explicit ShingleTable(const std::vector<Template>& templates) {
        std::size_t total = 0;
        for (const Template& one : templates) {
            total += one.shingles.size();
        }
        slots_.resize(std::bit_ceil(std::max<std::size_t>(total * 2, 2)));
        for (std::size_t i = 0; i < templates.size(); ++i) {
            for (const std::uint64_t hash : templates[i].shingles) {
                Entry& entry = slots_[slotOf(hash)];
                if (entry.number == 0) {
                    entry = {hash, ++count_, 0};
                }
                entry.templates |= 1U << i;
            }
        }
    }

    /// The entry of a shingle, or null when no template holds it.
    const Entry* find(std::uint64_t hash) const {
        const Entry& entry = slots_[slotOf(hash)];
        return entry.number != 0 ? &entry : nullptr;
    }

    std::size_t count() const { return count_; }

private:
    /// The slot that holds this hash, or the free one where it belongs.
    std::size_t slotOf(std::uint64_t hash) const {
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = hash & mask;
        while (slots_[slot].number != 0 && slots_[slot].hash != hash) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }

    std::vector<Entry> slots_;
    std::uint32_t count_ = 0;
};

static_assert(standardTextNames.size() <= ShingleTable::mostTemplates,
              "widen ShingleTable::Entry::templates");

const ShingleTable& shingleTable() {
    static const ShingleTable table(templates());
    return table;
}

/// For each template the positions, ascending, at which its shingles occur first in the text. The lists belong to
/// the thread and are kept, since most texts are shorter than what making the lists anew would cost.
const std::vector<std::vector<std::uint32_t>>& foundPositions(const WordHashes& words) {
    const ShingleTable& table = shingleTable();
    thread_local std::vector<std::vector<std::uint32_t>> found(templates().size());
    thread_local std::vector<bool> seen;
    seen.assign(table.count() + 1, false);
    for (std::vector<std::uint32_t>& positions : found) {
        positions.clear();
    }
    for (std::size_t i = 0; i + shingleLength <= words.size(); ++i) {
        const ShingleTable::Entry* entry = table.find(shingleAt(words, i));
        // A shingle counts once, where it stands first: repeating a phrase makes no better license.
        if (entry == nullptr || seen[entry->number]) {
            continue;
        }
        seen[entry->number] = true;
        for (std::uint32_t rest = entry->templates; rest != 0; rest &= rest - 1) {
            found[static_cast<std::size_t>(std::countr_zero(rest))].push_back(static_cast<std::uint32_t>(i));
        }
    }
    return found;
}

Candidate candidateOf(const Template& scored, const std::vector<std::uint32_t>& positions) {
    Candidate candidate{.id = scored.id, .wordCount = scored.wordCount};
    const std::size_t count = positions.size();
    candidate.score =
        static_cast<double>(count) / static_cast<double>(std::max<std::size_t>(scored.shingles.size(), 1));
    // A stray match far from the license's body must not stretch its region: tenth to ninetieth percentile.
    if (count > 0) {
        candidate.start = positions[count / 10];
        candidate.end = positions[count * 9 / 10];
    }
    return candidate;
}

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
        for (const KnownLicense& license : knownLicenses()) {
            // Rows that share a text, such as "GPL-2.0-only", are told apart by other evidence.
            if (license.text == license.id) {
                made.push_back(templateOf(license.id, SPDX::builtInText(license.id).value_or("")));
            }
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
    const WordHashes& words = text.licenseWords;
    std::vector<Candidate> scored;
    if (words.size() < shingleLength) {
        return scored;
    }
    const std::vector<std::vector<std::uint32_t>>& positions = foundPositions(words);
    scored.reserve(templates().size());
    for (std::size_t i = 0; i < templates().size(); ++i) {
        scored.push_back(candidateOf(templates()[i], positions[i]));
    }
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

}  // namespace ScanKit::LicenseMatcher

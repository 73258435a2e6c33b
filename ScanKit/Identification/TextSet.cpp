#include "ScanKit/Identification/TextSet.h"

#include "ScanKit/Identification/KnownLicense.h"
#include "ScanKit/Identification/LicenseWords.h"
#include "ScanKit/Licenses/LicenseTextNames.h"
#include "ScanKit/Licenses/LicenseTexts.h"

#include <algorithm>
#include <array>
#include <bit>

namespace ScanKit {
namespace {

static_assert(standardTextNames.size() <= TextSet::mostTexts &&
                  referenceTextNames.size() <= TextSet::mostTexts,
              "widen TextSet::Members");

std::uint64_t shingleAt(std::span<const std::uint64_t> words, std::size_t position) {
    return withWord(withWord(withWord(0, words[position]), words[position + 1]), words[position + 2]);
}

std::size_t shingleCountOf(std::span<const std::uint64_t> words) {
    return words.size() < TextSet::shingleLength ? 0 : words.size() - TextSet::shingleLength + 1;
}

/// The hashes of the words of a text, all of them and those of its license.
struct Words {
    std::vector<std::uint64_t> all, license;

    explicit Words(std::string_view text) {
        all.reserve(text.size() / 5);
        license.reserve(text.size() / 5);
        forEachLicenseLine(text, [&](const LicenseLine& line) {
            for (const LicenseWord& word : line.words) {
                all.push_back(word.hash);
                if (line.isPartOfLicense) {
                    license.push_back(word.hash);
                }
            }
        });
    }
};

/// The texts of these names, in the order of the known licenses.
TextSet textsOf(std::span<const std::string_view> names,
                std::optional<std::string_view> (*textNamed)(std::string_view)) {
    std::vector<TextSet::Source> sources;
    for (const KnownLicense& license : knownLicenses()) {
        for (const std::string_view name : names) {
            if (licenseOfText(name) == license.id) {
                sources.push_back({license.id, *textNamed(name)});
            }
        }
    }
    return TextSet(sources);
}

}  // namespace

TextSet::TextSet(const std::vector<Source>& sources) {
    std::vector<Words> texts;
    std::size_t total = 1;
    for (const Source& source : sources) {
        texts.emplace_back(source.text);
        total += texts.back().all.size();
    }
    slots_.resize(std::bit_ceil(total * 3 / 2));
    for (std::size_t i = 0; i < sources.size(); ++i) {
        ids_.push_back(sources[i].id);
        licenseSizes_.push_back(add(texts[i].license, 1U << i, &Entry::byLicenseWords));
        fullSizes_.push_back(add(texts[i].all, 1U << i, &Entry::byAllWords));
    }
}

TextSet::Size TextSet::add(std::span<const std::uint64_t> words, Members bit, Members Entry::*holders) {
    Size size{.words = words.size()};
    for (std::size_t at = 0; at < shingleCountOf(words); ++at) {
        const std::uint64_t shingle = shingleAt(words, at);
        Entry& entry = slots_[slotOf(shingle)];
        entry.hash = shingle;
        size.shingles += (entry.*holders & bit) == 0 ? 1 : 0;
        entry.*holders |= bit;
    }
    return size;
}

TextSet::Members TextSet::member(std::string_view id) const {
    Members members = 0;
    for (std::size_t i = 0; i < ids_.size(); ++i) {
        members |= ids_[i] == id ? 1U << i : 0;
    }
    return members;
}

/// The slot that holds this hash, or the free one where it belongs.
std::size_t TextSet::slotOf(std::uint64_t hash) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash & mask;
    while (!slots_[slot].isFree() && slots_[slot].hash != hash) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

std::vector<LicenseMatcher::Candidate> TextSet::candidates(
    std::span<const std::uint64_t> licenseWords) const {
    return scored(Lookup(*this, licenseWords).found_, &Found::byLicenseWords, licenseSizes_);
}

std::vector<LicenseMatcher::Candidate> TextSet::scored(std::span<const Found> found, Members Found::*holders,
                                                       const std::vector<Size>& sizes) const {
    // For each text the positions, ascending, at which its shingles occur first. The lists belong to the thread and are
    // kept, since most texts are shorter than what making the lists anew would cost.
    thread_local std::vector<std::vector<std::uint32_t>> positions(mostTexts);
    thread_local std::vector<bool> seen;  // of each slot, whether its shingle was met
    seen.assign(slots_.size(), false);
    for (std::vector<std::uint32_t>& ofOneText : positions) {
        ofOneText.clear();
    }
    for (std::size_t at = 0; at < found.size(); ++at) {
        Members rest = found[at].*holders;
        // A shingle counts once, where it stands first: repeating a phrase makes no better license.
        if (rest == 0 || seen[found[at].slot]) {
            continue;
        }
        seen[found[at].slot] = true;
        for (; rest != 0; rest &= rest - 1) {
            positions[static_cast<std::size_t>(std::countr_zero(rest))].push_back(
                static_cast<std::uint32_t>(at));
        }
    }
    std::vector<LicenseMatcher::Candidate> candidates;
    candidates.reserve(ids_.size());
    for (std::size_t i = 0; i < ids_.size(); ++i) {
        const std::vector<std::uint32_t>& met = positions[i];
        LicenseMatcher::Candidate candidate{.id = std::string(ids_[i]), .wordCount = sizes[i].words};
        candidate.score = static_cast<double>(met.size()) /
                          static_cast<double>(std::max<std::size_t>(sizes[i].shingles, 1));
        // A stray match far from the license's body must not stretch its region: tenth to ninetieth percentile.
        if (!met.empty()) {
            candidate.start = met[met.size() / 10];
            candidate.end = met[met.size() * 9 / 10];
        }
        candidates.push_back(std::move(candidate));
    }
    return candidates;
}

TextSet::Lookup::Lookup(const TextSet& set, std::span<const std::uint64_t> words)
    : set_(&set), found_(shingleCountOf(words)) {
    // The table does not fit the processor's nearest cache: each place is asked for some words ahead.
    constexpr std::size_t ahead = 8;
    std::array<std::uint64_t, ahead> hashes{};
    const auto ask = [&](std::size_t at) {
        hashes[at % ahead] = shingleAt(words, at);
        __builtin_prefetch(&set.slots_[hashes[at % ahead] & (set.slots_.size() - 1)]);
    };
    for (std::size_t at = 0; at < std::min(ahead, found_.size()); ++at) {
        ask(at);
    }
    for (std::size_t at = 0; at < found_.size(); ++at) {
        const std::size_t slot = set.slotOf(hashes[at % ahead]);
        const Entry& entry = set.slots_[slot];
        found_[at] = {static_cast<std::uint32_t>(slot), entry.byLicenseWords, entry.byAllWords};
        if (at + ahead < found_.size()) {
            ask(at + ahead);
        }
    }
}

std::vector<LicenseMatcher::Candidate> TextSet::Lookup::candidates() const {
    return set_->scored(found_, &Found::byAllWords, set_->fullSizes_);
}

void TextSet::Lookup::mark(Members members, WordMarks& marks) const {
    for (std::size_t at = 0; at < found_.size(); ++at) {
        if ((found_[at].byAllWords & members) != 0) {
            std::fill_n(marks.data() + at, shingleLength, 1);
        }
    }
}

const TextSet& standardLicenseTexts() {
    static const TextSet texts = textsOf(standardTextNames, standardText);
    return texts;
}

const TextSet& referenceLicenseTexts() {
    static const TextSet texts = textsOf(referenceTextNames, referenceText);
    return texts;
}

}  // namespace ScanKit

#include "ScanKit/Identification/PhraseSet.h"

#include "ScanKit/Identification/LicenseWords.h"

#include <algorithm>

namespace ScanKit {
namespace {

constexpr std::size_t filterSize = 1U << 14U;

}  // namespace

PhraseSet::PhraseSet(std::span<const std::string_view> phrases) : mayBegin_(filterSize) {
    for (std::size_t place = 0; place < phrases.size(); ++place) {
        Phrase phrase{place, LicenseText(phrases[place]).words};
        const std::uint64_t first = phrase.words.front();
        mayBegin_[first % filterSize] = true;
        byFirstWord_[first].push_back(std::move(phrase));
    }
}

std::vector<PhraseSet::Occurrence> PhraseSet::occurrences(std::span<const std::uint64_t> words) const {
    std::vector<Occurrence> found;
    for (std::size_t at = 0; at < words.size(); ++at) {
        if (!mayBegin_[words[at] % filterSize]) {
            continue;
        }
        const auto candidates = byFirstWord_.find(words[at]);
        if (candidates == byFirstWord_.end()) {
            continue;
        }
        const std::span<const std::uint64_t> rest = words.subspan(at);
        for (const Phrase& phrase : candidates->second) {
            if (phrase.words.size() <= rest.size() &&
                std::ranges::equal(phrase.words, rest.first(phrase.words.size()))) {
                found.push_back({phrase.place, at, at + phrase.words.size()});
            }
        }
    }
    return found;
}

}  // namespace ScanKit

#include "ScanKit/Identification/TextComparison.h"

#include "ScanKit/Identification/KnownLicense.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace ScanKit {
namespace {

/// The texts in which the words of a license and of its notice stand, by how their ids begin.
struct CoveringRow {
    std::string_view matched, texts;
};
constexpr auto coveringRows = std::to_array<CoveringRow>({
    {"AGPL", "AGPL"},
    {"LGPL", "LGPL"},
    {"LGPL", "GPL"},  // the LGPL is written as additions to the GPL, and asks for both notices
    {"GPL", "GPL"},
});

/// Whether a text that reads as `id` may hold words of the text of `textId`.
bool covers(std::string_view textId, std::string_view id) {
    // A notice of an uncounted BSD license grants what all of them grant; what only the oldest one asks is more.
    const bool isBareBsd = id == "BSD" && textId.starts_with("BSD-") && textId != "BSD-4-Clause";
    if (textId == familyOf(id) || isBareBsd) {
        return true;
    }
    return std::ranges::any_of(coveringRows, [&](const CoveringRow& row) {
        return id.starts_with(row.matched) && textId.starts_with(row.texts);
    });
}

TextSet::Members membersFor(const TextSet& set, const std::vector<std::string_view>& licenseIds) {
    TextSet::Members members = 0;
    for (const std::string_view textId : set.ids()) {
        if (std::ranges::any_of(licenseIds, [&](std::string_view id) { return covers(textId, id); })) {
            members |= set.member(textId);
        }
    }
    return members;
}

}  // namespace

std::vector<LicenseMatcher::Candidate> TextComparison::candidates() {
    std::vector<LicenseMatcher::Candidate> all = standard().candidates();
    std::ranges::move(reference().candidates(), std::back_inserter(all));
    return all;
}

WordMarks TextComparison::marksOf(std::string_view licenseId) {
    return marks({standardLicenseTexts().member(licenseId), referenceLicenseTexts().member(licenseId)});
}

WordMarks TextComparison::marksOfReading(const std::vector<std::string_view>& licenseIds,
                                         const std::vector<std::string_view>& held) {
    Texts texts{.standard = membersFor(standardLicenseTexts(), licenseIds)};
    for (const std::string_view id : held) {
        texts.standard |= standardLicenseTexts().member(id);
    }
    const auto isStandard = [](std::string_view id) {
        return standardLicenseTexts().member(familyOf(id)) != 0;
    };
    if (!std::ranges::all_of(licenseIds, isStandard)) {
        texts.reference = membersFor(referenceLicenseTexts(), licenseIds);
    }
    return marks(texts);
}

const TextSet::Lookup& TextComparison::standard() {
    return standard_ ? *standard_ : standard_.emplace(standardLicenseTexts(), words_);
}

const TextSet::Lookup& TextComparison::reference() {
    return reference_ ? *reference_ : reference_.emplace(referenceLicenseTexts(), words_);
}

WordMarks TextComparison::marks(Texts texts) {
    WordMarks marked(words_.size());
    if (texts.standard != 0) {
        standard().mark(texts.standard, marked);
    }
    if (texts.reference != 0) {
        reference().mark(texts.reference, marked);
    }
    return marked;
}

}  // namespace ScanKit

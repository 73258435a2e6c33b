#include "ScanKit/Identification/ShortNotice.h"

#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/PhraseSet.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>

namespace ScanKit {
namespace {

constexpr std::string_view tag = "SPDX-License-Identifier:";

struct NameRow {
    std::string_view name, id;
};
// The most restrictive first, and the more exact before the less.
constexpr auto names = std::to_array<NameRow>({
    {"agpl", "AGPL-3.0"},
    {"agplv3", "AGPL-3.0"},
    {"gpl v3", "GPL-3.0"},
    {"gplv3", "GPL-3.0"},
    {"gpl 3", "GPL-3.0"},
    {"gpl version 3", "GPL-3.0"},
    {"gpl v2", "GPL-2.0"},
    {"gplv2", "GPL-2.0"},
    {"gpl 2", "GPL-2.0"},
    {"gpl version 2", "GPL-2.0"},
    {"gpl", "GPL"},
});

}  // namespace

TaggedLicenses taggedLicenses(std::string_view text) {
    TaggedLicenses tagged;
    for (std::size_t at = text.find(tag); at != std::string_view::npos; at = text.find(tag, at + 1)) {
        const std::string_view behind = Text::firstLine(text.substr(at + tag.size()));
        const auto expression = LicenseExpression::parse(Text::trimmedOf(behind, " \t*/#-<>"));
        if (!expression) {
            continue;
        }
        tagged.isChoice |= expression->kind() == LicenseExpression::Kind::anyOf;
        for (std::string& id : expression->licenseIDs()) {
            if (std::ranges::find(tagged.ids, id) == tagged.ids.end()) {
                tagged.ids.push_back(std::move(id));
            }
        }
    }
    return tagged;
}

std::optional<std::string_view> gnuNameIn(std::span<const std::uint64_t> words) {
    static const PhraseSet phrases = phrasesOf(names, &NameRow::name);
    const std::vector<PhraseSet::Occurrence> found = phrases.occurrences(words);
    const auto first = std::ranges::min_element(found, {}, &PhraseSet::Occurrence::phrase);
    return first == found.end() ? std::nullopt : std::optional(names[first->phrase].id);
}

}  // namespace ScanKit

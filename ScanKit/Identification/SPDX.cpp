#include "ScanKit/Identification/SPDX.h"

#include "ScanKit/Licenses/LicenseTexts.h"
#include "ScanKit/Support/Regex.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace ScanKit::SPDX {
namespace {

using Alias = std::pair<std::string_view, std::string_view>;

// clang-format off
constexpr auto aliasRows = std::to_array<Alias>({
    {"mit", "MIT"},
    {"expat", "MIT"},
    {"mitnoattribution", "MIT-0"},
    {"mitnoattributionmit-0", "MIT-0"},
    {"mit-0", "MIT-0"},
    {"isc", "ISC"},
    {"iscl", "ISC"},
    {"iscisc", "ISC"},
    {"iscl", "ISC"},
    {"isciscl", "ISC"},
    {"0bsd", "0BSD"},
    {"bsdzeroclause", "0BSD"},
    {"zeroclausebsd", "0BSD"},
    {"bsd", "BSD"},
    {"bsd-style", "BSD"},
    {"bsdstyle", "BSD"},
    {"bsd-2", "BSD-2-Clause"},
    {"bsd2", "BSD-2-Clause"},
    {"bsd2-clause", "BSD-2-Clause"},
    {"2-clausebsd", "BSD-2-Clause"},
    {"simplifiedbsd", "BSD-2-Clause"},
    {"freebsd", "BSD-2-Clause"},
    {"bsd-2clause", "BSD-2-Clause"},
    {"bsd-3", "BSD-3-Clause"},
    {"bsd3", "BSD-3-Clause"},
    {"bsd3-clause", "BSD-3-Clause"},
    {"3-clausebsd", "BSD-3-Clause"},
    {"newbsd", "BSD-3-Clause"},
    {"modifiedbsd", "BSD-3-Clause"},
    {"revisedbsd", "BSD-3-Clause"},
    {"bsd-3clause", "BSD-3-Clause"},
    {"apache", "Apache-2.0"},
    {"apache2", "Apache-2.0"},
    {"apache2.0", "Apache-2.0"},
    {"apache-2", "Apache-2.0"},
    {"asl2.0", "Apache-2.0"},
    {"asl2", "Apache-2.0"},
    {"apachesoftware", "Apache-2.0"},
    {"apache20", "Apache-2.0"},
    {"apache1.1", "Apache-1.1"},
    {"zlib", "Zlib"},
    {"zlib/libpng", "Zlib"},
    {"zliblibpng", "Zlib"},
    {"boost", "BSL-1.0"},
    {"boost1.0", "BSL-1.0"},
    {"bsl", "BSL-1.0"},
    {"bsl1.0", "BSL-1.0"},
    {"boostbsl-1.0", "BSL-1.0"},
    {"boost1.0bsl-1.0", "BSL-1.0"},
    {"blueoakmodel1.0.0", "BlueOak-1.0.0"},
    {"blueoak", "BlueOak-1.0.0"},
    {"psf", "PSF-2.0"},
    {"pythonfoundation", "PSF-2.0"},
    {"psf-2.0", "PSF-2.0"},
    {"psf2.0", "PSF-2.0"},
    {"pythonsoftwarefoundation", "PSF-2.0"},
    {"python", "Python-2.0"},
    {"python-2.0", "Python-2.0"},
    {"unlicense", "Unlicense"},
    {"unlicenseunlicense", "Unlicense"},
    {"cc0", "CC0-1.0"},
    {"cc01.0", "CC0-1.0"},
    {"cc0-1.0", "CC0-1.0"},
    {"cc01.0universalcc01.0publicdomaindedication", "CC0-1.0"},
    {"publicdomain", "PublicDomain"},
    {"mpl", "MPL-2.0"},
    {"mpl2", "MPL-2.0"},
    {"mpl2.0", "MPL-2.0"},
    {"mozillapublic2.0", "MPL-2.0"},
    {"mozillapublic2.0mpl2.0", "MPL-2.0"},
    {"mpl1.1", "MPL-1.1"},
    {"mozillapublic1.1mpl1.1", "MPL-1.1"},
    {"epl", "EPL-2.0"},
    {"epl2.0", "EPL-2.0"},
    {"eclipsepublic2.0", "EPL-2.0"},
    {"eclipsepublic2.0epl-2.0", "EPL-2.0"},
    {"epl1.0", "EPL-1.0"},
    {"eclipsepublic1.0", "EPL-1.0"},
    {"gpl", "GPL"},
    {"gnugpl", "GPL"},
    {"gnugeneralpublic", "GPL"},
    {"gnugeneralpublicgpl", "GPL"},
    {"gpl2", "GPL-2.0-only"},
    {"gplv2", "GPL-2.0-only"},
    {"gpl-2", "GPL-2.0-only"},
    {"gnugplv2", "GPL-2.0-only"},
    {"gnugeneralpublicv2gplv2", "GPL-2.0-only"},
    {"gnugeneralpublic2", "GPL-2.0-only"},
    {"gplv2+", "GPL-2.0-or-later"},
    {"gpl2+", "GPL-2.0-or-later"},
    {"gnugeneralpublicv2orlatergplv2+", "GPL-2.0-or-later"},
    {"gpl3", "GPL-3.0-only"},
    {"gplv3", "GPL-3.0-only"},
    {"gpl-3", "GPL-3.0-only"},
    {"gnugplv3", "GPL-3.0-only"},
    {"gnugeneralpublicv3gplv3", "GPL-3.0-only"},
    {"gnugeneralpublic3", "GPL-3.0-only"},
    {"gplv3+", "GPL-3.0-or-later"},
    {"gpl3+", "GPL-3.0-or-later"},
    {"gnugeneralpublicv3orlatergplv3+", "GPL-3.0-or-later"},
    {"lgpl", "LGPL"},
    {"gnulgpl", "LGPL"},
    {"gnulessergeneralpublic", "LGPL"},
    {"gnulibraryorlessergeneralpubliclgpl", "LGPL"},
    {"lgplv2", "LGPL-2.0-only"},
    {"lgpl2", "LGPL-2.0-only"},
    {"gnulessergeneralpublicv2lgplv2", "LGPL-2.0-only"},
    {"lgplv2+", "LGPL-2.0-or-later"},
    {"gnulessergeneralpublicv2orlaterlgplv2+", "LGPL-2.0-or-later"},
    {"lgplv2.1", "LGPL-2.1-only"},
    {"lgpl2.1", "LGPL-2.1-only"},
    {"lgplv2.1+", "LGPL-2.1-or-later"},
    {"lgplv3", "LGPL-3.0-only"},
    {"lgpl3", "LGPL-3.0-only"},
    {"gnulessergeneralpublicv3lgplv3", "LGPL-3.0-only"},
    {"lgplv3+", "LGPL-3.0-or-later"},
    {"lgpl3+", "LGPL-3.0-or-later"},
    {"gnulessergeneralpublicv3orlaterlgplv3+", "LGPL-3.0-or-later"},
    {"agpl", "AGPL-3.0-only"},
    {"agplv3", "AGPL-3.0-only"},
    {"agpl3", "AGPL-3.0-only"},
    {"gnuafferogeneralpublic3", "AGPL-3.0-only"},
    {"gnuaffero", "AGPL-3.0-only"},
    {"agplv3+", "AGPL-3.0-or-later"},
    {"gnuafferogeneralpublicv3orlateragplv3+", "AGPL-3.0-or-later"},
    {"eupl1.2", "EUPL-1.2"},
    {"artistic2.0", "Artistic-2.0"},
    {"wtfpl", "WTFPL"},
    {"ofl1.1", "OFL-1.1"},
    {"silopenfont1.1", "OFL-1.1"},
    {"silopenfont1.1ofl-1.1", "OFL-1.1"},
    {"hpnd", "HPND"},
    {"unlicensed", "UNLICENSED"},
    {"proprietary", "UNLICENSED"},
    {"commercial", "UNLICENSED"},
    {"allrightsreserved", "UNLICENSED"},
});
// clang-format on

/// Spellings that differ between keyboards and countries, replaced before anything else is looked at.
constexpr auto replacements = std::to_array<Alias>({
    {"licence", "license"},
    {"\u2019", "'"},
    {"\u201C", "\""},
    {"\u201D", "\""},
});

constexpr std::string_view classifierPrefix = "License ::";

/// The rows by their ids in lower case.
const KnownLicense* rowOfLowercased(const std::string& identifier) {
    static const auto rows = [] {
        std::unordered_map<std::string, const KnownLicense*> byId;
        for (const KnownLicense& license : knownLicenses()) {
            byId.emplace(Text::lowercased(license.id), &license);
        }
        return byId;
    }();
    const auto found = rows.find(identifier);
    return found == rows.end() ? nullptr : found->second;
}

/// The name in a parenthesis at the end of the text, as in "The MIT License (MIT)".
std::optional<std::string_view> trailingParenthesis(std::string_view text) {
    static const Regex group(R"(\(([^()]+)\)\s*$)");
    const std::optional<Regex::Match> match = group.firstMatch(text);
    if (!match) {
        return std::nullopt;
    }
    const std::string_view inside =
        Text::trimmedOf(text.substr(match->begin, match->end - match->begin), "() \t");
    return inside == text ? std::nullopt : std::optional(inside);
}

/// Whether the name before a parenthesis says another version than what the parenthesis, which says none, stands for: in
/// "Mozilla Public License 1.0 (MPL)" the second is no more exact.
bool contradictsVersion(std::string_view id, std::string_view inside, std::string_view before) {
    static const Regex version(R"(\d+(\.\d+)*)");
    const auto said = version.firstMatch(before);
    return said && !version.firstMatch(inside) && version.firstMatch(id) &&
           id.find(before.substr(said->begin, said->end - said->begin)) == std::string_view::npos;
}

/// The name without filler words, punctuation and blanks: "Apache License, Version 2.0" is "apache2.0".
std::string squeezed(std::string_view text) {
    static const Regex punctuation(R"([\(\)\[\],:;"'])");
    static const Regex filler(
        R"(\bthe\b|\blicense\b|\bversion\b|\bv\.?(?=\s*\d)|\bsoftware\b|\bosi approved\b)");
    static const Regex blanks(R"(\s+)");
    std::string name = Text::lowercased(text);
    for (const auto& [written, replacement] : replacements) {
        name = Text::replacingAll(name, written, replacement);
    }
    name = punctuation.replacingMatches(name, " ");
    name = filler.replacingMatches(name, " ");
    name = blanks.replacingMatches(name, " ");
    return Text::replacingAll(Text::trimmed(name), " ", "");
}

/// The parts of a classifier between "::", trimmed.
std::vector<std::string_view> partsOf(std::string_view classifier) {
    std::vector<std::string_view> parts;
    for (std::size_t end = classifier.find("::"); end != std::string_view::npos;
         end = classifier.find("::")) {
        parts.push_back(Text::trimmed(classifier.substr(0, end)));
        classifier.remove_prefix(end + 2);
    }
    parts.push_back(Text::trimmed(classifier));
    return parts;
}

}  // namespace

/// "GPL-2.0+" is an old way to write "GPL-2.0-or-later"; where there is no such license the plus adds nothing.
const KnownLicense* lookup(std::string_view identifier) {
    std::string key = Text::lowercased(Text::trimmedOfBlanks(identifier));
    if (const KnownLicense* row = rowOfLowercased(key)) {
        return row;
    }
    if (!key.ends_with('+')) {
        return nullptr;
    }
    key.pop_back();
    if (const KnownLicense* row = rowOfLowercased(key + "-or-later")) {
        return row;
    }
    return rowOfLowercased(key);
}

std::optional<std::string_view> canonicalID(std::string_view identifier) {
    const KnownLicense* row = lookup(identifier);
    return row != nullptr ? std::optional(row->id) : std::nullopt;
}

std::optional<std::string_view> normalize(std::string_view text) {
    if (const auto id = canonicalID(text)) {
        return id;
    }
    // "GNU General Public License v2 or later (GPLv2+)": what stands in parentheses is the more exact name.
    if (const auto inside = trailingParenthesis(text)) {
        const auto id = normalize(*inside);
        if (id && !contradictsVersion(*id, *inside, text.substr(0, text.rfind('(')))) {
            return id;
        }
    }
    const auto alias = std::ranges::find(aliasRows, squeezed(text), &Alias::first);
    return alias != aliasRows.end() ? std::optional(alias->second) : std::nullopt;
}

std::string baseID(std::string_view identifier) {
    return std::string(familyOf(canonicalID(identifier).value_or(identifier)));
}

std::optional<std::string_view> licenseFromClassifier(std::string_view classifier) {
    if (!classifier.starts_with(classifierPrefix)) {
        return std::nullopt;
    }
    const std::vector<std::string_view> parts = partsOf(classifier);
    const std::string_view last = parts.back();
    const bool hasTwoParts = parts.size() == 2;
    // "License :: OSI Approved" alone says that there is a license, and not which.
    if (last != "OSI Approved" && !(hasTwoParts && last == "Other/Proprietary License")) {
        return normalize(last);
    }
    const bool isProprietary = classifier.find("Other/Proprietary") != std::string_view::npos;
    return isProprietary ? std::optional<std::string_view>("UNLICENSED") : std::nullopt;
}

std::optional<std::string> expressionFromClassifiers(const std::vector<std::string>& classifiers) {
    std::vector<std::string> ids;
    for (const std::string& classifier : classifiers) {
        const auto id = licenseFromClassifier(classifier);
        if (id && std::ranges::find(ids, *id) == ids.end()) {
            ids.emplace_back(*id);
        }
    }
    return ids.empty() ? std::nullopt : std::optional(Text::joined(ids, " OR "));
}

std::optional<std::string_view> builtInText(std::string_view name) {
    return standardText(name);
}

std::span<const std::pair<std::string_view, std::string_view>> aliases() {
    return aliasRows;
}

}  // namespace ScanKit::SPDX

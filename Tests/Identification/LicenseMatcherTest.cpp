#include "ScanKit/Licenses/LicenseTexts.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/Printers.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace ScanKit {
namespace {

using LicenseMatcher::Candidate;
using Words = std::vector<std::string>;

std::string standard(std::string_view name) {
    return std::string(standardText(name).value());
}

template <typename Found>
Words idsOf(const std::vector<Found>& found) {
    Words ids;
    std::ranges::transform(found, std::back_inserter(ids), &Found::id);
    return ids;
}

TEST(LicenseMatcher, FindsEachStandardTextInItself) {
    EXPECT_FALSE(LicenseMatcher::templates().empty());
    for (const LicenseMatcher::Template& one : LicenseMatcher::templates()) {
        const std::string text = standard(one.id);
        EXPECT_EQ(LicenseMatcher::bestMatch(text), (TextMatch{one.id, 1.0, false}));
        const Words words = LicenseMatcher::licenseWords(text);
        EXPECT_EQ(LicenseMatcher::shingles(words, 3), one.shingles) << one.id;
        EXPECT_EQ(words.size(), one.wordCount) << one.id;
    }
}

TEST(LicenseMatcher, SeesThroughLayoutAndCopyrightLines) {
    const std::string text = Text::uppercased(Text::replacingAll(standard("MIT"), "\n", "\r\n   "));
    const Words expected = LicenseMatcher::licenseWords(standard("MIT"));
    for (const char* line :
         {"The Example Project", "one two three four five six", "Copyright © 1999-2026 Somebody Önderson",
          "\t© 2026 by all of those who wrote some of it", "(c) a b c d e f g", "(C) license of somebody",
          "  All Rights Reserved, and a permission is nowhere in sight.", "ALL RIGHTS RESERVED in é"}) {
        EXPECT_EQ(LicenseMatcher::licenseWords(line + ("\n" + text)), expected) << line;
        EXPECT_EQ(LicenseMatcher::licenseWords(text + "\u2028" + line), expected) << line;
    }
    for (const char* line : {"one two three four five six seven", "permission", "It is granted", "Licence",
                             "License é", "x (c) y license"}) {
        EXPECT_GT(LicenseMatcher::licenseWords(text + "\n" + line).size(), expected.size()) << line;
    }
}

TEST(LicenseMatcher, FindsSeveralLicensesInTheirOrder) {
    EXPECT_EQ(idsOf(LicenseMatcher::matches(standard("MIT") + "\n\n" + standard("Apache-2.0"))),
              (Words{"MIT", "Apache-2.0"}));
    EXPECT_EQ(idsOf(LicenseMatcher::matches(standard("Zlib") + "\n" + standard("MIT") + "\n" +
                                            standard("GPL-2.0"))),
              (Words{"Zlib", "MIT", "GPL-2.0"}));
}

TEST(LicenseMatcher, AcceptsTheBetterOfTwoInOneRegionOrTheClearlyLonger) {
    struct Case {
        const char* about;
        std::vector<Candidate> candidates;
        Words accepted;
    };
    const Case cases[]{
        {"a score below 0.75", {{"a", 0.75, 100, 0, 100}, {"b", 0.7499, 100, 200, 300}}, {"a"}},
        {"the order of positions", {{"b", 0.9, 100, 200, 300}, {"a", 0.8, 100, 0, 100}}, {"a", "b"}},
        {"half a region shared", {{"a", 0.9, 100, 0, 100}, {"b", 0.8, 100, 50, 150}}, {"a", "b"}},
        {"more than half", {{"a", 0.9, 100, 0, 100}, {"b", 0.8, 100, 49, 149}}, {"a"}},
        {"more than half of the shorter", {{"a", 0.9, 900, 0, 900}, {"b", 0.9, 100, 840, 940}}, {"a"}},
        {"a longer one", {{"a", 0.89, 100, 0, 100}, {"b", 0.82, 111, 0, 100}}, {"b"}},
        {"a longer one that scores less than 0.82",
         {{"a", 0.85, 100, 0, 100}, {"b", 0.819, 111, 0, 100}},
         {"a"}},
        {"one that is not long enough", {{"a", 0.89, 100, 0, 100}, {"b", 0.82, 110, 0, 100}}, {"a"}},
        {"one that is not near enough", {{"a", 0.91, 100, 0, 100}, {"b", 0.82, 111, 0, 100}}, {"a"}},
        {"a single word", {{"a", 0.9, 3, 7, 7}, {"b", 0.8, 3, 7, 7}}, {"a", "b"}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(idsOf(LicenseMatcher::accepted(one.candidates)), one.accepted) << one.about;
    }
}

TEST(LicenseMatcher, ReadsNotices) {
    constexpr std::pair<const char*, const char*> cases[]{
        {"Licensed under the Apache License, Version 2.0; you may not use this file except in compliance",
         "Apache-2.0"},
        {"Licensed under the GNU General Public License version 2 or (at your option) any later version",
         "GPL-2.0-or-later"},
        {"GNU General Public License, Version 3", "GPL-3.0"},
        {"GNU General Public License, Version 3 or any later version", "GPL-3.0-or-later"},
        {"under the GNU General Public License", "GPL"},
        {"GNU Affero General Public License, not the GNU General Public License", "AGPL-3.0"},
        {"GNU Affero General Public License, or any later version", "AGPL-3.0-or-later"},
        {"GNU Lesser General Public License version 3 or any later version", "LGPL-3.0-or-later"},
        {"GNU Lesser General Public License version 2.1, or any later version", "LGPL-2.1-or-later"},
        {"GNU Library General Public License version 2", "LGPL-2.0"},
        {"GNU Lesser General Public Licence", "LGPL"},
        {"the Mozilla Public License, v. 2.0.", "MPL-2.0"},
        {"the Mozilla Public License, version 2.0.", "MPL-2.0"},
        {"Boost Software License - Version 1.0", "BSL-1.0"},
        {"Eclipse Public License v 2.0", "EPL-2.0"},
        {"Eclipse Public License version 2.0", "EPL-2.0"},
        {"Redistribution and use in source and binary forms, with or without modification, are permitted",
         "BSD"},
        {"This is free and unencumbered software released into the public domain.", "Unlicense"},
        {"Permission is hereby granted, free of charge, to any person\nobtaining a copy", "MIT"},
    };
    for (const auto& [text, id] : cases) {
        EXPECT_EQ(LicenseMatcher::noticeMatch(text), (TextMatch{id, 0.7, true})) << text;
        EXPECT_EQ(LicenseMatcher::matches(text), (std::vector<TextMatch>{{id, 0.7, true}})) << text;
    }
    for (const char* text :
         {"", "MIT", "the Apache License", "Mozilla Public License 1.1", "unrelated prose of many words"}) {
        EXPECT_EQ(LicenseMatcher::matches(text), std::vector<TextMatch>{}) << text;
    }
    EXPECT_EQ(LicenseMatcher::candidates("MIT License"), std::vector<Candidate>{});
}

/// The matcher's rules in their plainest form: each run of three words is looked for where it stands first.
std::vector<Candidate> slowCandidates(const Words& words) {
    std::map<std::uint64_t, std::size_t> firstPositions;
    std::vector<Candidate> sorted;
    for (std::size_t i = 0; i + 3 <= words.size(); ++i) {
        const auto next = words.begin() + static_cast<std::ptrdiff_t>(i);
        firstPositions.try_emplace(*LicenseMatcher::shingles({next, next + 3}, 3).begin(), i);
    }
    for (const LicenseMatcher::Template& one : LicenseMatcher::templates()) {
        std::set<std::size_t> found;
        for (const auto& [shingle, position] : firstPositions) {
            if (one.shingles.contains(shingle)) {
                found.insert(position);
            }
        }
        const std::vector<std::size_t> positions(found.begin(), found.end());
        Candidate next{.id = one.id, .wordCount = one.wordCount};
        next.score = static_cast<double>(positions.size()) / static_cast<double>(one.shingles.size());
        next.start = positions.empty() ? 0 : positions[positions.size() / 10];
        next.end = positions.empty() ? 0 : positions[9 * positions.size() / 10];
        const auto comesBefore = [&](const Candidate& before) {
            const bool near = std::abs(next.score - before.score) <= 0.005;
            return near ? next.wordCount > before.wordCount : next.score > before.score;
        };
        auto place = sorted.end();
        while (place != sorted.begin() && comesBefore(*std::prev(place))) {
            --place;
        }
        sorted.insert(place, next);
    }
    return words.size() < 3 ? std::vector<Candidate>{} : sorted;
}

/// Texts as they come in packages, and worse ones: cut, mixed, shuffled, in other scripts, without any sense.
Words variedTexts() {
    std::mt19937 random(20261121);
    Words texts{"", "license", "a license b", "\xFF\xFE license \xC3", "ΑΣ license İ permission granted ﬁle"};
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const auto& templates = LicenseMatcher::templates();
    for (int round = 0; round < 40; ++round) {
        std::string text = standard(templates[below(templates.size())].id);
        if (below(2) == 0) {
            text += "\n" + standard(templates[below(templates.size())].id);
        }
        for (std::size_t edits = below(40); edits > 0; --edits) {
            const char* const pieces[]{"\n",   " licence ", "\u2028", "é",          "Copyright ",
                                       "\r\n", "zzz ",      "\xFF",   " granted\n", "\u00A0"};
            text.insert(below(text.size()), pieces[below(std::size(pieces))]);
        }
        text.erase(below(text.size()), below(text.size()) / (1 + below(8)));
        texts.push_back(std::move(text));
    }
    return texts;
}

TEST(LicenseMatcher, AgreesWithThePlainRulesOnTextsOfEveryKind) {
    for (const std::string& text : variedTexts()) {
        SCOPED_TRACE(text.substr(0, 200));
        const Words words = LicenseMatcher::licenseWords(text);
        ASSERT_EQ(LicenseMatcher::candidates(text), slowCandidates(words));
        // A blank beyond ASCII at its end has a line read by Unicode's rules; plain lines must read the same.
        ASSERT_EQ(LicenseMatcher::licenseWords(Text::replacingAll(text, "\n", "\u00A0\n")), words);
    }
}

TEST(LookAlikes, ReadAsTheLicenseThatTheyAre) {
    struct Case {
        const char *base, *words, *id;  // a base of "" for one that is known by a notice
    };
    constexpr Case cases[]{
        {"GPL-3.0", "\"This License\" refers to version 3 of the GNU Affero General Public License",
         "AGPL-3.0"},
        {"GPL-3.0", "Server Side Public License", "SSPL-1.0"},
        {"LGPL-2.1", "terms of this Library General Public License", "LGPL-2.0"},
        {"BSD-2-Clause", "OpenSSL Toolkit", "OpenSSL"},
        {"BSD-3-Clause", "OpenSSL Toolkit", "OpenSSL"},
        {"BSD-3-Clause", "developed by the Apache Software Foundation", "Apache-1.1"},
        {"BSD-2-Clause", "All advertising materials mentioning features or use of this software",
         "BSD-4-Clause"},
        {"BSD-3-Clause", "All advertising materials mentioning features or use of this software",
         "BSD-4-Clause"},
        {"ISC", "appear in supporting documentation", "HPND"},
        {"MIT", "the Linux Consortium and the X Consortium", "X11"},
        {"",
         "SIL Open Font License, Version 1.1: permission is hereby granted, free of charge, to any person "
         "obtaining a copy",
         "OFL-1.1"},
        {"", "the Eclipse Public License v. 2.0, or the GNU General Public License, version 2", "EPL-2.0"},
    };
    for (const auto& [base, words, id] : cases) {
        const std::string text = *base != '\0' ? standard(base) : "";
        for (const std::string& one : {text + "\n" + words, words + ("\n" + text)}) {
            SCOPED_TRACE(one.substr(0, 60) + " -> " + id);
            const TextReading reading = readLicenseText(one);
            ASSERT_EQ(reading.matches.size(), 1U);
            // No template stands for a look-alike: it has no score.
            EXPECT_EQ(reading.matches[0],
                      (TextReading::Match{id, text.empty(), true, std::nullopt, reading.matches[0].region}));
            EXPECT_FALSE(!text.empty() && reading.holdsStandardText(base));
        }
    }
}

/// Whole words count: once, every owner whose name ends in "x Consortium" turned the MIT license into another one.
TEST(LookAlikes, AreFoundOnlyAsWholeWordsOfATextWithOneLicense) {
    for (const std::string owner :
         {"\nThe Linux Consortium", "\nThe X Consortiums", "\nMatrix Consortium, Inc."}) {
        const TextReading reading = readLicenseText(standard("MIT") + owner);
        EXPECT_EQ(idsOf(reading.matches), Words{"MIT"}) << owner;
        EXPECT_TRUE(reading.holdsStandardText("MIT")) << owner;
    }
    const TextReading two = readLicenseText(standard("MIT") + standard("Apache-2.0") + "\nthe X Consortium");
    EXPECT_EQ(idsOf(two.matches), (Words{"MIT", "Apache-2.0"}));
    EXPECT_TRUE(two.holdsStandardText("MIT"));
    const TextReading notice = readLicenseText(
        "Permission is hereby granted, free of charge, to any person obtaining a copy, by the X Consortium");
    EXPECT_EQ(notice.matches,
              (std::vector<TextReading::Match>{{.id = "MIT", .byNotice = true, .score = 0.7}}));
}

TEST(TextReading, IsUsableWhenItsMatchesAccountForIt) {
    const auto words = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 1; i <= count; ++i) {
            text += i % 10 == 0 ? "own\n" : "own ";
        }
        return text + "\n";
    };
    const std::string notice = "Licensed under the Apache License, Version 2.0";  // eight words
    const std::string license = standard("MPL-2.0");
    const std::size_t covered = LicenseMatcher::licenseWords(license).size();
    const std::pair<std::string, bool> cases[]{
        {standard("GPL-3.0"), true},
        {words(492) + notice, true},
        {words(493) + notice, false},
        {"unrelated", false},
        {license + words(covered - 10), true},  // the full text covers half of it
        {license + words(covered + 10), false},
    };
    for (const auto& [text, isUsable] : cases) {
        EXPECT_EQ(readLicenseText(text).isUsable(), isUsable)
            << text.substr(0, 60) << "… of " << text.size() << " bytes";
    }
    TextReadings readings;
    SharedText first = notice, second = notice, other = license;
    EXPECT_EQ(readings.of(first), readings.of(second)) << "each text is read once";
    EXPECT_EQ(&*first, &*second) << "and kept once";
    EXPECT_NE(readings.of(first), readings.of(other));
}

}  // namespace
}  // namespace ScanKit

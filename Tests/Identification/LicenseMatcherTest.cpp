#include "ScanKit/Identification/LicenseMatcher.h"

#include "ScanKit/Licenses/StandardTexts.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Identification/SlowMatcher.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using Ids = std::vector<std::string>;

std::string standard(std::string_view name) {
    return std::string(standardText(name).value());
}

Ids idsOf(const std::vector<TextMatch>& matches) {
    Ids ids;
    for (const TextMatch& match : matches) {
        ids.push_back(match.id);
    }
    return ids;
}

TEST(LicenseMatcher, FindsEachStandardTextInItself) {
    ASSERT_EQ(LicenseMatcher::templates().size(), 16U);
    for (const LicenseMatcher::Template& one : LicenseMatcher::templates()) {
        const std::string text = standard(one.id);
        const auto best = LicenseMatcher::bestMatch(text);
        ASSERT_TRUE(best) << one.id;
        EXPECT_EQ(*best, (TextMatch{one.id, 1.0, false})) << one.id;
        EXPECT_EQ(LicenseMatcher::shingles(LicenseMatcher::licenseWords(text), 3), one.shingles) << one.id;
        EXPECT_EQ(LicenseMatcher::licenseWords(text).size(), one.wordCount) << one.id;
    }
}

TEST(LicenseMatcher, SeesThroughLayoutAndCopyrightLines) {
    std::string text = standard("MIT");
    text = Text::replacingAll(text, "\n", "\r\n   ");
    text =
        "The Example Project\nCopyright © 1999-2026 Somebody Önderson\n(c) Nobody\nAll Rights Reserved.\n" +
        Text::uppercased(text);
    const auto best = LicenseMatcher::bestMatch(text);
    ASSERT_TRUE(best);
    EXPECT_EQ(best->id, "MIT");
    EXPECT_GT(best->score, 0.98);
}

TEST(LicenseMatcher, FindsSeveralLicensesInTheirOrder) {
    EXPECT_EQ(idsOf(LicenseMatcher::matches(standard("MIT") + "\n\n" + standard("Apache-2.0"))),
              (Ids{"MIT", "Apache-2.0"}));
    EXPECT_EQ(idsOf(LicenseMatcher::matches(standard("Zlib") + "\n" + standard("MIT") + "\n" +
                                            standard("GPL-2.0"))),
              (Ids{"Zlib", "MIT", "GPL-2.0"}));
}

TEST(LicenseMatcher, ReadsNotices) {
    const std::pair<const char*, const char*> cases[]{
        {"Licensed under the Apache License, Version 2.0; you may not use this file except in compliance",
         "Apache-2.0"},
        {"Licensed under the GNU General Public License version 2 or (at your option) any later version",
         "GPL-2.0-or-later"},
        {"GNU General Public License, Version 3", "GPL-3.0"},
        {"under the GNU General Public License", "GPL"},
        {"GNU Affero General Public License", "AGPL-3.0"},
        {"GNU Lesser General Public License version 2.1, or any later version", "LGPL-2.1-or-later"},
        {"GNU Library General Public License version 2", "LGPL-2.0"},
        {"GNU Lesser General Public License", "LGPL"},
        {"GNU Lesser General Public Licence", "LGPL"},
        {"the Mozilla Public License, v. 2.0.", "MPL-2.0"},
        {"Boost Software License - Version 1.0", "BSL-1.0"},
        {"Eclipse Public License v 2.0", "EPL-2.0"},
        {"This is free and unencumbered software released into the public domain.", "Unlicense"},
        {"Permission is hereby granted, free of charge, to any person\nobtaining a copy", "MIT"},
    };
    for (const auto& [text, id] : cases) {
        EXPECT_EQ(LicenseMatcher::noticeMatch(text), (TextMatch{id, 0.7, true})) << text;
    }
    for (const char* text :
         {"", "MIT", "the Apache License", "Mozilla Public License 1.1", "unrelated prose of many words"}) {
        EXPECT_FALSE(LicenseMatcher::noticeMatch(text)) << text;
        EXPECT_TRUE(LicenseMatcher::matches(text).empty()) << text;
    }
    EXPECT_TRUE(LicenseMatcher::candidates("MIT License").empty());
}

/// Texts as they come in packages, and worse ones: cut, mixed, shuffled, in other scripts, without any sense.
std::vector<std::string> variedTexts() {
    std::mt19937 random(20261121);
    std::vector<std::string> texts{"", "license", "a license b", "\xFF\xFE license \xC3",
                                   "ΑΣ license İ permission granted ﬁle"};
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    const auto& templates = LicenseMatcher::templates();
    for (int round = 0; round < 60; ++round) {
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

TEST(LicenseMatcher, AgreesWithTheSlowOne) {
    for (const std::string& text : variedTexts()) {
        SCOPED_TRACE(text.substr(0, 200));
        ASSERT_EQ(LicenseMatcher::licenseWords(text), SlowMatcher::licenseWords(text));
        ASSERT_EQ(LicenseMatcher::candidates(text), SlowMatcher::candidates(text));
        ASSERT_EQ(LicenseMatcher::matches(text), SlowMatcher::matches(text));
    }
}

}  // namespace
}  // namespace ScanKit

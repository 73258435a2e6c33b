#include "ScanKit/Identification/TextReading.h"

#include "ScanKit/Licenses/StandardTexts.h"
#include "Tests/Builders/Printers.h"

namespace ScanKit {
namespace {

std::string standard(std::string_view name) {
    return std::string(standardText(name).value());
}

TEST(LookAlikes, ReadAsTheLicenseThatTheyAre) {
    struct Case {
        std::string text;
        const char* id;
        bool byNotice;
    };
    const std::string eula = "\nThis long text speaks of its own terms and then names somebody else's: ";
    const Case cases[]{
        {standard("GPL-3.0") +
             "\n\"This License\" refers to version 3 of the GNU Affero General Public License.\n",
         "AGPL-3.0", false},
        {"Server Side Public License\n" + standard("GPL-3.0"), "SSPL-1.0", false},
        {standard("GPL-3.0") + "\nOffered to everybody under the Server Side Public License", "SSPL-1.0",
         false},
        {standard("LGPL-2.1") + "\nby the terms of this Library General Public License and no other one\n",
         "LGPL-2.0", false},
        {standard("BSD-3-Clause") + "\nfor use in the OpenSSL Toolkit (as it is distributed with this one)\n",
         "OpenSSL", false},
        {standard("BSD-2-Clause") +
             "\nAll advertising materials mentioning features or use of this software must say so\n",
         "BSD-4-Clause", false},
        {standard("MIT") + "\nExcept as contained in this notice, the name of the Linux Consortium and the X "
                           "Consortium shall not be used\n",
         "X11", false},
        {eula + "SIL Open Font License, Version 1.1: permission is hereby granted, free of charge, to any "
                "person obtaining a copy\n",
         "OFL-1.1", true},
        {eula + "the Eclipse Public License v. 2.0, or the GNU General Public License, version 2\n",
         "EPL-2.0", true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text.substr(0, 60) + " -> " + one.id);
        const TextReading reading = readLicenseText(one.text);
        ASSERT_EQ(reading.matches.size(), 1U);
        // No template stands for a look-alike: it has no score.
        EXPECT_EQ(reading.matches[0],
                  (TextReading::Match{one.id, one.byNotice, std::nullopt, reading.matches[0].region}));
        EXPECT_FALSE(reading.holdsStandardText("GPL-3.0"));
        EXPECT_FALSE(reading.holdsStandardText("MIT"));
    }
}

/// Whole words count: once, every owner whose name ends in "x Consortium" turned the MIT license into another one.
TEST(LookAlikes, AreFoundOnlyAsWholeWordsOfATextWithOneLicense) {
    for (const char* owner : {"The Linux Consortium", "The X Consortiums", "Matrix Consortium, Inc."}) {
        const TextReading reading =
            readLicenseText(standard("MIT") + "\nCopyright and all else belongs to " + owner + " alone\n");
        ASSERT_EQ(reading.matches.size(), 1U) << owner;
        EXPECT_EQ(reading.matches[0].id, "MIT") << owner;
        EXPECT_TRUE(reading.matches[0].score) << owner;
    }
    const TextReading two = readLicenseText(standard("MIT") + "\n" + standard("Apache-2.0") +
                                            "\nthe X Consortium and all of its members\n");
    ASSERT_EQ(two.matches.size(), 2U);
    EXPECT_EQ(two.matches[0].id, "MIT");
    EXPECT_TRUE(two.holdsStandardText("MIT"));
    const TextReading notice = readLicenseText(
        "Permission is hereby granted, free of charge, to any person obtaining a copy, by the X Consortium");
    EXPECT_EQ(notice.matches, (std::vector<TextReading::Match>{{"MIT", true, 0.7, std::nullopt}}));
}

TEST(TextReading, IsUsableWhenItsMatchesAccountForIt) {
    const auto words = [](std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += i % 10 == 9 ? "own\n" : "own ";
        }
        return text + "\n";
    };
    const std::string notice = "Licensed under the Apache License, Version 2.0";  // eight words
    const std::size_t ofMit = LicenseMatcher::licenseWords(standard("MIT")).size();
    const std::pair<std::string, bool> cases[]{
        {standard("GPL-3.0"), true},
        {words(492) + notice, true},
        {words(493) + notice, false},
        {"unrelated", false},
        // Many short licenses in a long text: what counts is whether they cover half of it.
        {standard("MIT") + words(ofMit) + standard("BlueOak-1.0.0") + standard("ISC"), true},
        {standard("MIT") + words(2000), false},
    };
    for (const auto& [text, isUsable] : cases) {
        EXPECT_EQ(readLicenseText(text).isUsable(), isUsable) << text.substr(0, 60);
    }
}

}  // namespace
}  // namespace ScanKit

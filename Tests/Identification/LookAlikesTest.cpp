#include "ScanKit/Identification/TextReading.h"

#include "ScanKit/Licenses/StandardTexts.h"

#include <gtest/gtest.h>

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
        {standard("GPL-3.0") + "\nThe licensor offers all of this under the Server Side Public License.\n",
         "SSPL-1.0", false},
        {standard("LGPL-2.1") + "\nby the terms of this Library General Public License and no other one\n",
         "LGPL-2.0", false},
        {standard("BSD-3-Clause") + "\nfor use in the OpenSSL Toolkit (as it is distributed with this one)\n",
         "OpenSSL", false},
        {standard("BSD-2-Clause") +
             "\nAll advertising materials mentioning features or use of this software must say so\n",
         "BSD-4-Clause", false},
        {standard("MIT") +
             "\nExcept as contained in this notice, the name of the X Consortium shall not be used\n",
         "X11", false},
        {eula + "SIL Open Font License, Version 1.1: permission is hereby granted, free of charge, to any "
                "person obtaining a copy\n",
         "OFL-1.1", true},
        {eula + "the Eclipse Public License v. 2.0, or the GNU General Public License, version 2\n",
         "EPL-2.0", true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.id);
        const TextReading reading = readLicenseText(one.text);
        ASSERT_EQ(reading.matches.size(), 1U);
        EXPECT_EQ(reading.matches[0].id, one.id);
        EXPECT_EQ(reading.matches[0].byNotice, one.byNotice);
        EXPECT_FALSE(reading.matches[0].score) << "no template stands for a look-alike";
        EXPECT_FALSE(reading.holdsStandardText("GPL-3.0"));
        EXPECT_FALSE(reading.holdsStandardText("MIT"));
    }
}

/// Whole words count: once, every owner whose name ends in "x Consortium" turned the MIT license into another one.
TEST(LookAlikes, AreNotFoundInsideOtherWords) {
    for (const char* owner : {"The Linux Consortium", "The X Consortiums", "Matrix Consortium, Inc."}) {
        const TextReading reading =
            readLicenseText(standard("MIT") + "\nCopyright and all else belongs to " + owner + " alone\n");
        ASSERT_EQ(reading.matches.size(), 1U) << owner;
        EXPECT_EQ(reading.matches[0].id, "MIT") << owner;
        EXPECT_TRUE(reading.matches[0].score) << owner;
    }
}

TEST(LookAlikes, AreSoughtOnlyWhereOneLicenseIsFound) {
    const TextReading two = readLicenseText(standard("MIT") + "\n" + standard("Apache-2.0") +
                                            "\nthe X Consortium and all of its members\n");
    ASSERT_EQ(two.matches.size(), 2U);
    EXPECT_EQ(two.matches[0].id, "MIT");
    EXPECT_TRUE(two.holdsStandardText("MIT"));
}

TEST(TextReading, IsUsableWhenItsMatchesAccountForIt) {
    std::string prose;
    for (int i = 0; i < 100; ++i) {
        prose += "these are terms of our own making and they go on and on\n";
    }
    EXPECT_TRUE(readLicenseText(standard("GPL-3.0")).isUsable());
    EXPECT_TRUE(readLicenseText("Licensed under the Apache License, Version 2.0").isUsable());
    EXPECT_FALSE(readLicenseText(prose + "Licensed under the Apache License, Version 2.0").isUsable());
    EXPECT_FALSE(readLicenseText(prose + standard("MIT")).isUsable())
        << "a short license at the end of a long text";
    EXPECT_FALSE(readLicenseText("unrelated").isUsable());
}

}  // namespace
}  // namespace ScanKit

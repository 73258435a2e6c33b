#include "ScanKit/Identification/LicenseExpression.h"

#include "Tests/Builders/Printers.h"

namespace ScanKit {
namespace {

using enum LicenseCategory;

struct Case {
    const char* text;
    const char* printed;
    LicenseCategory category;
    const char* chosen;
};

TEST(LicenseExpression, ReadsPrintsAndClassifies) {
    const Case cases[]{
        {"mit", "MIT", permissive, "MIT"},
        {"((MIT))", "MIT", permissive, "MIT"},
        {"mit or isc", "MIT OR ISC", permissive, "MIT"},
        {"GPL-2.0+", "GPL-2.0-or-later", strongCopyleft, "GPL-2.0-or-later"},
        {"MIT OR Apache-2.0 AND Zlib", "MIT OR (Apache-2.0 AND Zlib)", permissive, "MIT"},
        {"(MIT OR GPL-2.0-only)AND Zlib", "(MIT OR GPL-2.0-only) AND Zlib", permissive,
         "(MIT OR GPL-2.0-only) AND Zlib"},
        {"GPL-3.0-only Or MIT", "GPL-3.0-only OR MIT", permissive, "MIT"},
        {"GPL-3.0-only OR (LGPL-3.0-only AND MIT)", "GPL-3.0-only OR (LGPL-3.0-only AND MIT)", weakCopyleft,
         "LGPL-3.0-only AND MIT"},
        {"MIT AND GPL-3.0-only", "MIT AND GPL-3.0-only", strongCopyleft, "MIT AND GPL-3.0-only"},
        {"BSD-3-Clause OR Apache-2.0", "BSD-3-Clause OR Apache-2.0", permissive, "BSD-3-Clause"},
        {"gpl-2.0-only WITH Classpath-exception-2.0", "GPL-2.0-only WITH Classpath-exception-2.0",
         weakCopyleft, "GPL-2.0-only WITH Classpath-exception-2.0"},
        {"AGPL-3.0-only with anything", "AGPL-3.0-only WITH anything", networkCopyleft,
         "AGPL-3.0-only WITH anything"},
        {"MIT\n\tOR\u00A0ISC", "MIT OR ISC", permissive, "MIT"},
        {"MIT OR MIT", "MIT OR MIT", permissive, "MIT"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        const auto expression = LicenseExpression::parse(one.text);
        ASSERT_TRUE(expression);
        EXPECT_EQ(expression->description(), one.printed);
        EXPECT_EQ(expression->category(), one.category);
        EXPECT_EQ(expression->chosenOption().description(), one.chosen);
        EXPECT_EQ(LicenseExpression::parse(expression->description()), expression);
    }
}

TEST(LicenseExpression, RefusesWhatIsNoExpressionOverKnownLicenses) {
    for (const char* text : {"", " ", "MIT OR", "OR MIT", "MIT WITH", "(MIT AND ISC) WITH X", "(MIT) WITH X",
                             "MIT )", "(MIT", "()", "MIT Apache-2.0", "Foo OR MIT", "MIT/Apache-2.0",
                             "MIT,ISC", "MIT WITH a WITH b", "MIT AND AND ISC", "WITH", "(\u0301MIT)"}) {
        EXPECT_EQ(LicenseExpression::parse(text), std::nullopt) << text;
    }
}

TEST(LicenseExpression, StaysCheapHoweverDeeplyItNests) {
    std::string nested = "MIT";
    for (int i = 0; i < 1000; ++i) {
        nested = "(" + nested + " OR ISC)";
    }
    const auto deep = LicenseExpression::parse(nested);
    ASSERT_TRUE(deep);
    EXPECT_EQ(deep->category(), permissive);
    EXPECT_FALSE(LicenseExpression::parse("(" + nested + ")"));
    EXPECT_FALSE(LicenseExpression::parse(std::string(200'000, '(')));
    EXPECT_EQ(LicenseExpression::parse("MIT OR (MIT AND Zlib)")->licenseIDs(),
              (std::vector<std::string>{"MIT", "MIT", "Zlib"}));
    EXPECT_EQ(LicenseExpression::allOf({}).category(), unknown);
    EXPECT_EQ(LicenseExpression::license("Foo").category(), unknown);
}

TEST(LicenseExpression, ReadsSeparatedNamesAsAChoice) {
    const std::pair<const char*, const char*> cases[]{
        {"MIT/Apache-2.0", "MIT OR Apache-2.0"},
        {"BSD-3-Clause | GPL-2.0+", "BSD-3-Clause OR GPL-2.0-or-later"},
        {"Apache License 2.0, MIT License", "Apache-2.0 OR MIT"},
        {"MIT,,MIT", "MIT OR MIT"}};
    for (const auto& [text, printed] : cases) {
        EXPECT_EQ(LicenseExpression::fromSeparatedNames(text), LicenseExpression::parse(printed)) << text;
    }
    for (const char* text : {"MIT/Foo", "MIT", "MIT/", "/", ""}) {
        EXPECT_EQ(LicenseExpression::fromSeparatedNames(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace ScanKit

#include "ScanKit/Support/Text.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(Text, FoldsCaseByTheRootLocale) {
    EXPECT_EQ(Text::lowercased("MIT I"), "mit i");  // a Turkish locale would give a dotless i
    EXPECT_EQ(Text::lowercased("ÄΣ"), "äς");
    EXPECT_EQ(Text::uppercased("mit ß"), "MIT SS");
}

TEST(Text, CountsExtendedGraphemeClusters) {
    EXPECT_EQ(Text::characterCount("a\r\nb"), 3U);
    EXPECT_EQ(Text::characterCount("e\u0301"), 1U);
    EXPECT_EQ(Text::characterCount("👩‍👩‍👧"), 1U);
    EXPECT_EQ(Text::characterCount(""), 0U);
    EXPECT_EQ(Text::prefix("e\u0301xyz", 2), "e\u0301x");
    EXPECT_EQ(Text::prefix("ab", 5), "ab");
    EXPECT_EQ(Text::prefix("ab", 0), "");
}

TEST(Text, TrimsWhatEachRuleNames) {
    EXPECT_EQ(Text::trimmed("\u00A0\n a b \t\u2028"), "a b");
    EXPECT_EQ(Text::trimmedOfBlanks("\t\u3000a\n "), "a\n");
    EXPECT_EQ(Text::trimmedOf("((a) b )", "() \t"), "a) b");
    EXPECT_EQ(Text::trimmed(" \n"), "");
}

TEST(Text, SplitsLinesAtEveryUnicodeLineBreak) {
    using Lines = std::vector<std::string_view>;
    EXPECT_EQ(Text::nonEmptyLines("a\r\n\nb\u2028c\u0085d\vé"), (Lines{"a", "b", "c", "d", "é"}));
    EXPECT_EQ(Text::nonEmptyLines("\n\n"), Lines{});
    EXPECT_EQ(Text::firstLine("é\u2029b"), "é");
}

TEST(Text, ReplacesEachInvalidPart) {
    EXPECT_EQ(Text::validUtf8("caf\xE9!"), "caf\uFFFD!");
    EXPECT_EQ(Text::validUtf8("\xF0\x9F\x98"), "\uFFFD");               // one truncated scalar is one part
    EXPECT_EQ(Text::validUtf8("\xC0\xAF"), "\uFFFD\uFFFD");             // overlong
    EXPECT_EQ(Text::validUtf8("\xED\xA0\x80").substr(0, 3), "\uFFFD");  // a surrogate
    EXPECT_TRUE(Text::isValidUtf8("plain \uFFFD"));
}

}  // namespace
}  // namespace ScanKit

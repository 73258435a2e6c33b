#include "QuorvaneCLI/Terminal.h"

#include <unistd.h>

#include <gtest/gtest.h>

namespace {

TEST(Terminal, ShowsControlCharactersInPlaceOfSendingThem) {
    const std::pair<const char*, const char*> cases[]{
        {"plain é 漢 👩‍👧", "plain é 漢 👩‍👧"},
        {"\x1b[31mred\x1b]0;title\a", "␛[31mred␛]0;title␇"},
        {"a\nb\tc\rd", "a␊b␉c␍d"},
        {"\x7f", "␡"},
        {"\u009b31m", "\\u{9B}31m"},
        {"a\u202Egpj.exe", "a\\u{202E}gpj.exe"},
        {"a\u2028b", "a\\u{2028}b"},
        {"\xFF\xC3", "\uFFFD\uFFFD"},
    };
    for (const auto& [text, shown] : cases) {
        EXPECT_EQ(Terminal::safe(text), shown);
    }
}

TEST(Terminal, FitsTextIntoColumns) {
    EXPECT_EQ(Terminal::width("漢字e\u0301"), 5U);
    EXPECT_EQ(Terminal::fitted("abcdef", 6), "abcdef");
    EXPECT_EQ(Terminal::fitted("abcdef", 5), "abcd…");
    EXPECT_EQ(Terminal::fitted("漢字漢字", 6), "漢字…");
    EXPECT_EQ(Terminal::fitted("e\u0301e\u0301e\u0301", 2), "e\u0301…");
    EXPECT_EQ(Terminal::fitted("abc", 0), "");
}

TEST(Terminal, TellsATerminalFromAFile) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_FALSE(Terminal::columns(ends[1]));
    EXPECT_FALSE(Terminal::takesColour(ends[1]));
    close(ends[0]);
    close(ends[1]);
}

}  // namespace

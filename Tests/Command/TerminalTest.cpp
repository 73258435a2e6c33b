#include "QuorvaneCLI/Terminal.h"

#include "QuorvaneCLI/ProgressLine.h"
#include "QuorvaneCLI/TextStyle.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// The two ends of a terminal of so many columns: what is written to the first is read at the second.
std::pair<int, int> terminalOf(unsigned short columns) {
    const int reading = posix_openpt(O_RDWR | O_NOCTTY);
    EXPECT_TRUE(grantpt(reading) == 0 && unlockpt(reading) == 0);
    const int writing = open(ptsname(reading), O_RDWR | O_NOCTTY);
    const winsize size{.ws_row = 24, .ws_col = columns};
    EXPECT_EQ(ioctl(writing, TIOCSWINSZ, &size), 0);
    return {writing, reading};
}

std::string readAll(int descriptor) {
    std::string text;
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    for (char c = 0; poll(&waiting, 1, 200) == 1 && read(descriptor, &c, 1) == 1;) {
        text += c;
    }
    return text;
}

TEST(Terminal, ShowsControlCharactersInPlaceOfSendingThem) {
    const std::pair<const char*, const char*> cases[]{
        {"plain é 漢 👩‍👧", "plain é 漢 👩‍👧"},
        {"\x1b[31mred\x1b]0;title\a", "␛[31mred␛]0;title␇"},
        {"a\nb\tc\rd\x01\x1F e", "a␊b␉c␍d␁␟ e"},
        {"\u0080\u009b31m\u009F\u00A0", "\\u{80}\\u{9B}31m\\u{9F}\u00A0"},
        {"\u061C\u200D\u200E\u200F\u2010", "\\u{61C}\u200D\\u{200E}\\u{200F}\u2010"},
        {"‡\u202F\u2065\u206A", "‡\u202F\u2065\u206A"},
        {"a\u202A\u202Egpj.exe\u2066\u2069", "a\\u{202A}\\u{202E}gpj.exe\\u{2066}\\u{2069}"},
        {"a\u2028b\x7F\xFF\xC3", "a\\u{2028}b␡\uFFFD\uFFFD"},
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

TEST(Terminal, BreaksLinesBetweenWords) {
    using enum Terminal::LongWords;
    using Lines = std::vector<std::string>;
    const std::tuple<const char*, std::size_t, Terminal::LongWords, Lines> cases[]{
        {"", 5, broken, {""}},
        {"one two", 7, broken, {"one two"}},
        {"one two", 6, broken, {"one", "two"}},
        {"see https://example.com/a now", 8, runOn, {"see", "https://example.com/a", "now"}},
        {"@scope/name", 8, broken, {"@scope/", "name"}},
        {"a-very-long-name", 10, broken, {"a-very-", "long-name"}},
        {"a-verylongname", 8, broken, {"a-verylo", "ngname"}},
        {"漢字漢字", 5, broken, {"漢字", "漢字"}},
        {"漢", 1, broken, {"漢"}},
        {"e\u0301e\u0301e\u0301", 2, broken, {"e\u0301e\u0301", "e\u0301"}},
    };
    for (const auto& [text, columns, longWords, lines] : cases) {
        EXPECT_EQ(Terminal::wrapped(text, columns, longWords), lines) << text;
    }
}

TEST(Terminal, TellsATerminalFromAFile) {
    const int terminal = terminalOf(137).first;
    EXPECT_EQ(Terminal::columns(terminal), 137U);
    EXPECT_EQ(Terminal::columns(terminalOf(0).first), 80U) << "a terminal that does not say";
    int pipeEnds[2];
    ASSERT_EQ(pipe(pipeEnds), 0);
    EXPECT_EQ(Terminal::columns(pipeEnds[1]), std::nullopt);
    for (const auto& [noColour, kind, takesIt] :
         {std::tuple{"", "xterm", true}, {"1", "xterm", false}, {"", "dumb", false}}) {
        const EnvironmentVariable first("NO_COLOR", noColour), second("TERM", kind);
        EXPECT_EQ(Terminal::takesColour(terminal), takesIt) << "NO_COLOR=" << noColour << " TERM=" << kind;
        EXPECT_FALSE(Terminal::takesColour(pipeEnds[1]));
        // Who says it on the command line means it, whatever the terminal.
        for (const int descriptor : {terminal, pipeEnds[1]}) {
            EXPECT_TRUE(TextStyle::of(descriptor, ColourUse::always).colour);
            EXPECT_FALSE(TextStyle::of(descriptor, ColourUse::never).colour);
        }
        EXPECT_EQ(TextStyle::of(terminal, ColourUse::automatic).colour, takesIt);
    }
}

TEST(Terminal, GetsColoursAndWholeLinesFromTheCommand) {
    const TemporaryFolder project{{"requirements.txt", "a-package-of-very-many-letters==1.0\n"}};
    const auto [writing, reading] = terminalOf(64);
    const std::string command = "NO_COLOR= TERM=xterm " QUORVANE_COMMAND " " + project.path().string();
    EXPECT_EQ(std::system((command + " 2>/dev/null >" + ttyname(writing)).c_str()), 0);
    EXPECT_THAT(readAll(reading), testing::AllOf(testing::HasSubstr("\x1b[31mNo license found\x1b[0m"),
                                                 testing::HasSubstr("letters")));
}

TEST(ProgressLine, IsOneLineThatIsClearedInTheEnd) {
    const auto [writing, reading] = terminalOf(40);
    const int before = dup(STDERR_FILENO);
    dup2(writing, STDERR_FILENO);
    {
        ProgressLine line(true), quiet(false);
        line.show({.done = 1, .total = 0, .name = "too soon"});
        std::this_thread::sleep_for(std::chrono::milliseconds(510));
        quiet.show({.done = 2, .total = 0, .name = "not asked for"});
        line.show({.done = 2, .total = 0, .name = "coral\n"});
        line.show({.done = 3, .total = 9, .name = "a-package-of-many-letters"});
    }
    dup2(before, STDERR_FILENO);
    EXPECT_EQ(readAll(reading),
              "\r\x1b[KReading packages: 2  coral␊\r\x1b[KIdentifying licenses: 3 of 9  a-packag…\r\x1b[K");
}

}  // namespace

#include "QuorvaneCLI/Terminal.h"

#include "QuorvaneCLI/ProgressLine.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <array>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// A terminal of so many columns, and what has been sent to it.
class PretendedTerminal {
public:
    explicit PretendedTerminal(unsigned short columns) : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        EXPECT_TRUE(grantpt(master_) == 0 && unlockpt(master_) == 0);
        descriptor = open(ptsname(master_), O_RDWR | O_NOCTTY);
        const winsize size{.ws_row = 24, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
        EXPECT_EQ(ioctl(descriptor, TIOCSWINSZ, &size), 0);
    }
    ~PretendedTerminal() {
        close(descriptor);
        close(master_);
    }
    PretendedTerminal(const PretendedTerminal&) = delete;
    PretendedTerminal& operator=(const PretendedTerminal&) = delete;

    std::string sent() const {
        std::array<char, 4096> bytes{};
        fcntl(master_, F_SETFL, O_NONBLOCK);
        const ssize_t count = read(master_, bytes.data(), bytes.size());
        return {bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
    }
    int descriptor = -1;

private:
    int master_;
};

TEST(Terminal, ShowsControlCharactersInPlaceOfSendingThem) {
    const std::pair<const char*, const char*> cases[]{
        {"plain é 漢 👩‍👧", "plain é 漢 👩‍👧"},
        {"\x1b[31mred\x1b]0;title\a", "␛[31mred␛]0;title␇"},
        {"a\nb\tc\rd\x01\x1F e", "a␊b␉c␍d␁␟ e"},
        {"\x7f", "␡"},
        {"\u0080\u009b31m\u009F\u00A0", "\\u{80}\\u{9B}31m\\u{9F}\u00A0"},
        {"\u061C\u200E\u200F\u2010", "\\u{61C}\\u{200E}\\u{200F}\u2010"},
        {"a\u202A\u202Egpj.exe\u2066\u2069", "a\\u{202A}\\u{202E}gpj.exe\\u{2066}\\u{2069}"},
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
    EXPECT_EQ(Terminal::fitted("abc", 1), "…");
    EXPECT_EQ(Terminal::fitted("abc", 0), "");
}

TEST(Terminal, TellsATerminalFromAFile) {
    const PretendedTerminal wide(137), unknown(0);
    EXPECT_EQ(Terminal::columns(wide.descriptor), 137U);
    EXPECT_EQ(Terminal::columns(unknown.descriptor), 80U);
    const TemporaryFolder folder;
    const int file = open((folder / "file").c_str(), O_CREAT | O_RDWR, 0600);
    EXPECT_EQ(Terminal::columns(file), std::nullopt);
    const EnvironmentVariable none("NO_COLOR", ""), kind("TERM", "xterm");
    EXPECT_TRUE(Terminal::takesColour(wide.descriptor));
    EXPECT_FALSE(Terminal::takesColour(file));
    close(file);
    {
        const EnvironmentVariable dumb("TERM", "dumb");
        EXPECT_FALSE(Terminal::takesColour(wide.descriptor));
    }
    const EnvironmentVariable noColour("NO_COLOR", "1");
    EXPECT_FALSE(Terminal::takesColour(wide.descriptor));
}

TEST(ProgressLine, IsOneLineThatIsClearedInTheEnd) {
    const PretendedTerminal terminal(40);
    const int before = dup(STDERR_FILENO);
    dup2(terminal.descriptor, STDERR_FILENO);
    {
        ProgressLine line(true), quiet(false);
        line.show({.done = 1, .total = 0, .name = "too soon"});
        std::this_thread::sleep_for(std::chrono::milliseconds(510));
        quiet.show({.done = 2, .total = 0, .name = "not asked for"});
        line.show({.done = 2, .total = 0, .name = "coral\n"});
        line.show({.done = 3, .total = 9, .name = "a-package-of-many-letters"});
    }
    dup2(before, STDERR_FILENO);
    close(before);
    EXPECT_EQ(terminal.sent(),
              "\r\x1b[KReading packages: 2  coral␊"
              "\r\x1b[KIdentifying licenses: 3 of 9  a-packag…\r\x1b[K");
}

}  // namespace

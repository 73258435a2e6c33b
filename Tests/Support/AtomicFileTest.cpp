#include "ScanKit/Support/AtomicFile.h"

#include "ScanKit/Support/FileSystem.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <csignal>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;

/// Each way to keep what is unfinished, whichever the file system of the test would choose.
class AtomicFile : public ::testing::TestWithParam<UnfinishedFile> {};
INSTANTIATE_TEST_SUITE_P(Ways, AtomicFile, ::testing::Values(UnfinishedFile::unnamed, UnfinishedFile::named));

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : listPackageFolder(folder)) {
        names.push_back(entry.name);
    }
    return names;
}

TEST_P(AtomicFile, ReplacesAFileWholeAndNothingElse) {
    const std::string leftover = ".quorvane-" + std::to_string(getpid()) + "-0";
    const TemporaryFolder folder{{leftover, "another program's"},
                                 {"report", "a much longer text than the new one"},
                                 {"precious", "untouched"}};
    folder.link("link", folder / "precious");
    chmod((folder / "report").c_str(), 0600);
    const mode_t before = umask(027);
    for (const char* name : {"report", "link"}) {
        EXPECT_EQ(saveFile(folder / name, std::string("new\0", 4), GetParam()), std::nullopt);
        EXPECT_EQ(contentOf(folder / name), std::string("new\0", 4));
        struct stat status {};
        ASSERT_EQ(lstat((folder / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode, S_IFREG | 0640U) << "not what the link names";
    }
    umask(before);
    EXPECT_EQ(contentOf(folder / "precious"), "untouched");
    EXPECT_EQ(contentOf(folder / leftover), "another program's");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre(leftover, "link", "precious", "report"));
}

TEST_P(AtomicFile, TellsTheSystemsReasonAndLeavesNothingBehind) {
    const TemporaryFolder folder{{"file", ""}};
    folder.makeFolder("folder");
    const std::pair<std::string, std::string> cases[] = {
        {"folder", "Is a directory"},
        {"missing/report", "No such file or directory"},
        {"file/report", "Not a directory"},
        {std::string(500, 'n') + " Dependencies.csv", "File name too long"},
    };
    for (const auto& [below, reason] : cases) {
        EXPECT_EQ(saveFile(folder / below, "text", GetParam()), reason) << below;
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "folder")) << below;
    }
}

TEST_P(AtomicFile, KeepsTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder{{"report", "old"}};
    // A limit on the size of files stops this process as a full disk would.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{10'000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    const std::optional<std::string> failure =
        saveFile(folder / "report", std::string(10'001, 'x'), GetParam());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(failure, "File too large");
    EXPECT_EQ(contentOf(folder / "report"), "old");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("report"));
}

TEST_P(AtomicFile, TellsOfAFolderThatCannotBeWritten) {
    const TemporaryFolder folder;
    chmod(folder.path().c_str(), 0555);
    // The superuser may write everywhere: for one call it becomes someone who may not.
    const bool hasChanged = geteuid() == 0 && seteuid(65534) == 0;
    const std::optional<std::string> failure = saveFile(folder / "report", "text", GetParam());
    EXPECT_TRUE(!hasChanged || seteuid(0) == 0);
    EXPECT_EQ(failure, "Permission denied");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre());
}

/// A process that saves one text after the other over the same file until it is ended.
pid_t startSaving(const std::filesystem::path& file, UnfinishedFile kind) {
    const pid_t child = fork();
    if (child == 0) {
        removeUnfinishedFilesOnSignals();
        for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
            saveFile(file, std::string(100'000, letter), kind);
        }
    }
    return child;
}

TEST_P(AtomicFile, IsWholeAndAloneWheneverItsWriterIsEnded) {
    const TemporaryFolder folder;
    const std::filesystem::path file = folder / "report";
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGKILL}) {
        for (int run = 0; run < 40; ++run) {
            const pid_t child = startSaving(file, GetParam());
            while (!isRegularFile(file)) {
                usleep(100);
            }
            // Ever other moments of one saving, which takes some hundred microseconds.
            usleep(static_cast<useconds_t>(run * 37));
            kill(child, signal);
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << "it does not end as it would";
            const std::string text = contentOf(file);
            EXPECT_TRUE(text.size() == 100'000 && text.find_first_not_of(text[0]) == std::string::npos);
            if (signal == SIGKILL) {
                // Nothing can be done at that moment; the next run does it.
                EXPECT_EQ(saveFile(file, text, GetParam()), std::nullopt);
            }
            ASSERT_THAT(namesIn(folder.path()), ElementsAre("report"))
                << strsignal(signal) << ", run " << run;
        }
    }
}

TEST(AtomicFile, RemovesOnlyWhatAnEndedProcessLeft) {
    const pid_t ended = fork();
    if (ended == 0) {
        _exit(0);
    }
    waitpid(ended, nullptr, 0);
    const std::string left = ".quorvane-" + std::to_string(ended) + "-";
    const TemporaryFolder folder{{left + "0", "half"}, {left + "12", ""}};
    const std::vector<std::string> others{".quorvane-" + std::to_string(getppid()) + "-0",
                                          left,
                                          left + "1a",
                                          left + "-1",
                                          ".quorvane--1-0",
                                          ".quorvane-0-0",
                                          ".quorvane-99999999999-0",
                                          "quorvane-1-0",
                                          left + "7"};
    for (const std::string& name : others) {
        folder.write(name, "someone's");
    }
    folder.makeFolder(left + "8");
    folder.link(left + "9", "target");
    // Its number says nothing here when the process lives on another machine, but what it writes is held.
    const int held = open((folder / (left + "7")).c_str(), O_RDONLY);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    EXPECT_EQ(saveFile(folder / "report", "text"), std::nullopt);
    std::vector<std::string> expected = others;
    expected.insert(expected.end(), {left + "8", left + "9", "report"});
    EXPECT_THAT(namesIn(folder.path()), ::testing::UnorderedElementsAreArray(expected));
    close(held);
}

}  // namespace
}  // namespace ScanKit

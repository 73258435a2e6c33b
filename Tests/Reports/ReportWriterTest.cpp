#include "ScanKit/Reports/ReportWriter.h"

#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/PDFReport.h"
#include "ScanKit/Support/FileSystem.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : listPackageFolder(folder)) {
        names.push_back(entry.name);
    }
    return names;
}

/// Keeps this process from writing files of more than so many bytes, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        handler_ = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int) = nullptr;
};

/// The superuser may write everywhere: for the length of a test it becomes someone who may not.
class WithoutPrivileges {
public:
    WithoutPrivileges() : changed_(geteuid() == 0 && seteuid(65534) == 0) {}
    ~WithoutPrivileges() {
        if (changed_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

private:
    bool changed_;
};

TEST(ReportWriter, WritesTheChosenReportsInTheirOrder) {
    const TemporaryFolder folder;
    const ScanResult result = sampleResult();
    const ReportOptions options{.projectName = "a/b"};
    using enum ReportFormats;
    const SavedReports saved = saveReports(result, options, json | csv | notice | pdf, folder.path());
    EXPECT_EQ(saved.failure, std::nullopt);
    EXPECT_THAT(saved.files, ElementsAre(folder / "a-b License Report.pdf", folder / "NOTICE.txt",
                                         folder / "a-b Dependencies.csv", folder / "a-b Dependencies.json"));
    EXPECT_EQ(contentOf(folder / "a-b License Report.pdf"), PDFReport::document(result, options));
    EXPECT_EQ(contentOf(folder / "NOTICE.txt"), Exports::notice(result, options));
    EXPECT_EQ(contentOf(folder / "a-b Dependencies.csv"), Exports::csv(result, options));
    EXPECT_EQ(contentOf(folder / "a-b Dependencies.json"), Exports::json(result, options));
    EXPECT_EQ(namesIn(folder.path()).size(), 4U);

    EXPECT_EQ(saveReports(result, options, none, folder.path()), SavedReports{});
}

TEST(ReportWriter, FirstFailureStopsAndKeepsWhatWasWritten) {
    const TemporaryFolder folder;
    folder.makeFolder("p Dependencies.csv");
    const SavedReports saved =
        saveReports(sampleResult(), {.projectName = "p"},
                    ReportFormats::notice | ReportFormats::csv | ReportFormats::json, folder.path());
    EXPECT_EQ(saved.failure, "Is a directory");
    EXPECT_THAT(saved.files, ElementsAre(folder / "NOTICE.txt"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("NOTICE.txt", "p Dependencies.csv"));
}

TEST(ReportWriter, ReplacesAFileWhole) {
    const TemporaryFolder folder{{"report", "a much longer text than the new one"}};
    chmod((folder / "report").c_str(), 0600);
    const mode_t before = umask(027);
    EXPECT_EQ(saveFile(folder / "report", std::string("new\0", 4)), std::nullopt);
    umask(before);
    EXPECT_EQ(contentOf(folder / "report"), std::string("new\0", 4));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("report"));
    struct stat status {};
    ASSERT_EQ(stat((folder / "report").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(ReportWriter, ReplacesALinkAndNotWhatItNames) {
    const TemporaryFolder folder{{"precious", "untouched"}};
    folder.link("out/report", folder / "precious");
    EXPECT_EQ(saveFile(folder / "out/report", "new"), std::nullopt);
    EXPECT_EQ(contentOf(folder / "precious"), "untouched");
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "out/report"));
}

TEST(ReportWriter, AnotherProgramsAsideFileIsLeftAlone) {
    const std::string leftover = ".quorvane-" + std::to_string(getpid()) + "-0";
    const TemporaryFolder folder{{leftover, "theirs"}};
    EXPECT_EQ(saveFile(folder / "report", "new"), std::nullopt);
    EXPECT_EQ(contentOf(folder / leftover), "theirs");
    EXPECT_EQ(contentOf(folder / "report"), "new");
}

TEST(ReportWriter, TellsTheSystemsReasonAndLeavesNothingBehind) {
    const TemporaryFolder folder{{"file", ""}};
    folder.makeFolder("folder");
    struct Case {
        std::string below, reason;
    };
    const Case cases[] = {
        {"folder", "Is a directory"},
        {"missing/report", "No such file or directory"},
        {"file/report", "Not a directory"},
        {std::string(500, 'n') + " Dependencies.csv", "File name too long"},
    };
    for (const auto& [below, reason] : cases) {
        EXPECT_EQ(saveFile(folder / below, "text"), reason) << below;
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("file", "folder")) << below;
    }
}

TEST(ReportWriter, KeepsTheOldFileWhenTheDiskIsFull) {
    const TemporaryFolder folder{{"report", "old"}};
    std::optional<std::string> failure;
    {
        const FileSizeLimit limit(10'000);
        failure = saveFile(folder / "report", std::string(10'001, 'x'));
    }
    EXPECT_EQ(failure, "File too large");
    EXPECT_EQ(contentOf(folder / "report"), "old");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("report"));
}

TEST(ReportWriter, TellsOfAFolderThatCannotBeWritten) {
    const TemporaryFolder folder;
    chmod(folder.path().c_str(), 0555);
    std::optional<std::string> failure;
    {
        const WithoutPrivileges user;
        failure = saveFile(folder / "report", "text");
    }
    EXPECT_EQ(failure, "Permission denied");
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

}  // namespace
}  // namespace ScanKit

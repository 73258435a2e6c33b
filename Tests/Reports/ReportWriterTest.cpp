#include "ScanKit/Reports/ReportWriter.h"

#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/PDF/PDFReport.h"
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

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : listPackageFolder(folder)) {
        names.push_back(entry.name);
    }
    return names;
}

TEST(ReportWriter, WritesTheChosenReportsInTheirOrder) {
    const TemporaryFolder folder;
    const ScanResult result = sampleResult();
    const ReportOptions options{.projectName = "a/b"};
    using enum ReportFormats;
    const SavedReports saved = saveReports(result, options, json | csv | notice | pdf, folder.path());
    EXPECT_THAT(saved.files, ElementsAre(folder / "a-b License Report.pdf", folder / "NOTICE.txt",
                                         folder / "a-b Dependencies.csv", folder / "a-b Dependencies.json"));
    EXPECT_EQ(contentOf(folder / "a-b License Report.pdf"), PDFReport::document(result, options));
    EXPECT_EQ(contentOf(folder / "NOTICE.txt"), Exports::notice(result, options));
    EXPECT_EQ(contentOf(folder / "a-b Dependencies.csv"), Exports::csv(result, options));
    EXPECT_EQ(contentOf(folder / "a-b Dependencies.json"), Exports::json(result, options));
    EXPECT_TRUE(!saved.failure && namesIn(folder.path()).size() == 4);
    EXPECT_EQ(saveReports(result, options, none, folder.path()), SavedReports{});
}

TEST(ReportWriter, SaysWhatAReportCannotShow) {
    const TemporaryFolder folder;
    using enum ReportFormats;
    const std::string unknown = "\U0010FFFD";  // of no script, and in no font
    for (const auto& [formats, preparedFor, warnings] :
         {std::tuple{pdf, unknown, 1U}, {notice | csv | json, unknown, 0U}, {pdf, std::string("кит"), 0U}}) {
        EXPECT_EQ(
            saveReports(resultOf({}), {.preparedFor = preparedFor}, formats, folder.path()).warnings.size(),
            warnings)
            << preparedFor;
    }
}

TEST(ReportWriter, FirstFailureStopsAndKeepsWhatWasWritten) {
    const TemporaryFolder folder;
    folder.makeFolder("p Dependencies.csv");
    using enum ReportFormats;
    const SavedReports saved =
        saveReports(sampleResult(), {.projectName = "p"}, notice | csv | json, folder.path());
    EXPECT_EQ(saved.failure, "Is a directory");
    EXPECT_THAT(saved.files, ElementsAre(folder / "NOTICE.txt"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("NOTICE.txt", "p Dependencies.csv"));
}

TEST(ReportWriter, ReplacesAFileWholeAndNothingElse) {
    const std::string leftover = ".quorvane-" + std::to_string(getpid()) + "-0";
    const TemporaryFolder folder{{leftover, "another program's"},
                                 {"report", "a much longer text than the new one"},
                                 {"precious", "untouched"}};
    folder.link("link", folder / "precious");
    chmod((folder / "report").c_str(), 0600);
    const mode_t before = umask(027);
    for (const char* name : {"report", "link"}) {
        EXPECT_EQ(saveFile(folder / name, std::string("new\0", 4)), std::nullopt);
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

TEST(ReportWriter, TellsTheSystemsReasonAndLeavesNothingBehind) {
    const TemporaryFolder folder{{"file", ""}};
    folder.makeFolder("folder");
    const std::pair<std::string, std::string> cases[] = {
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
    // A limit on the size of files stops this process as a full disk would.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{10'000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    const std::optional<std::string> failure = saveFile(folder / "report", std::string(10'001, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(failure, "File too large");
    EXPECT_EQ(contentOf(folder / "report"), "old");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("report"));
}

TEST(ReportWriter, TellsOfAFolderThatCannotBeWritten) {
    const TemporaryFolder folder;
    chmod(folder.path().c_str(), 0555);
    // The superuser may write everywhere: for one call it becomes someone who may not.
    const bool hasChanged = geteuid() == 0 && seteuid(65534) == 0;
    const std::optional<std::string> failure = saveFile(folder / "report", "text");
    EXPECT_TRUE(!hasChanged || seteuid(0) == 0);
    EXPECT_EQ(failure, "Permission denied");
    EXPECT_THAT(namesIn(folder.path()), ElementsAre());
}

}  // namespace
}  // namespace ScanKit

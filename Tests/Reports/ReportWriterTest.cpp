#include "ScanKit/Reports/ReportWriter.h"

#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/PDF/PDFReport.h"
#include "ScanKit/Support/FileSystem.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    EXPECT_EQ(saved.failedFile, folder / "p Dependencies.csv");
    EXPECT_THAT(saved.files, ElementsAre(folder / "NOTICE.txt"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("NOTICE.txt", "p Dependencies.csv"));
}

}  // namespace
}  // namespace ScanKit

#include "ScanKit/Reports/Exports.h"

#include "ScanKit/Support/Json.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/Golden.h"
#include "Tests/Reports/SampleResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

class ExportsTest : public ::testing::Test {
protected:
    EnvironmentVariable zone_{"TZ", "UTC"};
};

TEST_F(ExportsTest, WholeFilesOfTheSampleProject) {
    const ScanResult result = sampleResult();
    ReportOptions options = sampleOptions();
    expectGolden("sample-NOTICE.txt", Exports::notice(result, options));
    expectGolden("sample.csv", Exports::csv(result, options));
    expectGolden("sample.json", Exports::json(result, options));
    options.includeDev = true;
    expectGolden("sample-with-dev.csv", Exports::csv(result, options));
}

TEST_F(ExportsTest, WholeFilesOfAnEmptyProject) {
    const ScanResult result = resultOf({});
    expectGolden("empty-NOTICE.txt", Exports::notice(result, sampleOptions()));
    expectGolden("empty.csv", Exports::csv(result, sampleOptions()));
    expectGolden("empty.json", Exports::json(result, sampleOptions()));
}

TEST_F(ExportsTest, NoticeReproducesTheTextOfTheChosenLicense) {
    struct Case {
        std::string license, introduced;  // no introduction: no text is found
    };
    const Case cases[] = {
        {"MIT", "standard MIT text follows.]\n\nMIT License"},
        {"MIT OR GPL-3.0-only", "standard MIT text"},
        {"GPL-3.0-only OR Zlib", "standard Zlib text"},
        {"GPL-2.0-or-later", "standard GPL-2.0-or-later text follows.]\n\nGNU GENERAL PUBLIC LICENSE"},
        {"Apache-2.0 AND MIT", "standard Apache-2.0 text follows.]\n\nApache License"},
        {"BSD-4-Clause", ""},
        {"Custom", ""},
    };
    for (const auto& [license, introduced] : cases) {
        SCOPED_TRACE(license);
        const std::string notice = Exports::notice(resultOf({{.name = "p", .license = license}}), {});
        if (introduced.empty()) {
            EXPECT_THAT(notice, HasSubstr("[No license text was found for this package."));
            EXPECT_THAT(notice, Not(HasSubstr("[No license file")));
        } else {
            EXPECT_THAT(notice, HasSubstr("package. The " + introduced));
            EXPECT_THAT(notice, Not(EndsWith("\n\n")));  // a standard text is trimmed
        }
    }
}

TEST_F(ExportsTest, NoticePrefersThePackagesOwnTextAsItStands) {
    const ScanResult result =
        resultOf({{.name = "p", .version = "1", .license = "MIT", .licenseText = "\n own text \n\n"}});
    EXPECT_THAT(Exports::notice(result, {}), EndsWith("=\n\n\n own text \n\n\n"));
}

TEST_F(ExportsTest, CsvGuardsFormulasAndQuotes) {
    struct Case {
        std::string name, written;
    };
    const Case cases[] = {
        {"plain", "plain"},
        {"", ""},
        {" =1", " =1"},
        {"=SUM(A1)", "'=SUM(A1)"},
        {"@scope/name", "'@scope/name"},
        {"\tx", "'\tx"},
        {"\rx", "\"'\rx\""},
        {"-", "'-"},
        {"-1", "-1"},
        {"+2.5", "+2.5"},
        {"+.5e-3", "+.5e-3"},
        {"-1 ", "'-1 "},
        {"-1,5", "\"'-1,5\""},
        {"+1+1", "'+1+1"},
        {"-0x10", "'-0x10"},
        {"-inf", "'-inf"},
        {"+nan", "'+nan"},
        {"-1e999", "'-1e999"},
        {"-1e", "'-1e"},
        {"+-1", "'+-1"},
        {"=\u0301x", "=\u0301x"},  // one character with its accent, so not "="
        {"a,b", "\"a,b\""},
        {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"a\nb", "\"a\nb\""},
        {"a\rb", "\"a\rb\""},
        {"a\r\nb", "a\r\nb"},  // the pair is one character that is neither
        {"a\r\n\rb", "\"a\r\n\rb\""},
        {"a\u2028b;c", "a\u2028b;c"},
        {"=\",\"", "\"'=\"\",\"\"\""},
    };
    for (const auto& [name, written] : cases) {
        SCOPED_TRACE(name);
        const std::string csv = Exports::csv(resultOf({{.name = name}}), {});
        EXPECT_THAT(csv, HasSubstr("\r\nSwiftPM," + written + ",,,Unknown,Not found,"));
    }
}

TEST_F(ExportsTest, CsvRoundsTheMatchToAWholePercentage) {
    for (const auto& [score, written] : {std::pair{0.0, "0%"},
                                         {0.004, "0%"},
                                         {0.996, "100%"},
                                         {1.0, "100%"},
                                         {0.555, "56%"},
                                         {0.125, "12%"}}) {
        const ScanResult result = resultOf({{.name = "p", .matchScore = score}});
        EXPECT_THAT(Exports::csv(result, {}), HasSubstr(std::string(",Not found,") + written + ",,no,"));
    }
}

TEST_F(ExportsTest, InvalidBytesInOptionsBecomeReplacementCharacters) {
    const ReportOptions options{.projectName = "caf\xE9", .appName = "\xFF"};
    const ScanResult result = resultOf({});
    EXPECT_THAT(Exports::notice(result, options), HasSubstr("NOTICES\ncaf\uFFFD\n"));
    EXPECT_THAT(Exports::notice(result, options), HasSubstr(" with \uFFFD. "));
    JsonReader reader;
    const auto document = reader.read(Exports::json(result, options));
    ASSERT_TRUE(document);
    EXPECT_EQ(document->stringMember("project"), "caf\uFFFD");
    EXPECT_EQ(document->stringMember("generator"), "\uFFFD");
    EXPECT_EQ(Exports::fileNames(options.projectName).csv, "caf\uFFFD Dependencies.csv");
}

TEST_F(ExportsTest, FileNamesHoldNoSeparators) {
    EXPECT_EQ(Exports::fileNames("a/b:c"),
              (Exports::FileNames{"a-b-c License Report.pdf", "NOTICE.txt", "a-b-c Dependencies.csv",
                                  "a-b-c Dependencies.json"}));
    EXPECT_EQ(Exports::fileNames("").json, " Dependencies.json");
    EXPECT_EQ(Exports::fileNames("../..").pdf, "..-.. License Report.pdf");
    EXPECT_EQ(Exports::fileNames(" x. y\\").csv, " x. y\\ Dependencies.csv");
}

}  // namespace
}  // namespace ScanKit

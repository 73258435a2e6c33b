#include "ScanKit/Reports/Exports.h"

#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(Exports, WholeFilesOfTheSampleProjectAndOfAnEmptyOne) {
    const EnvironmentVariable zone{"TZ", "UTC"};
    ReportOptions options = sampleOptions();
    for (const auto& [name, result] : {std::pair{"sample", sampleResult()}, {"empty", resultOf({})}}) {
        expectGolden(std::string(name) + "-NOTICE.txt", Exports::notice(result, options));
        expectGolden(std::string(name) + ".csv", Exports::csv(result, options));
        expectGolden(std::string(name) + ".json", Exports::json(result, options));
    }
    options.includeDev = true;
    expectGolden("sample-with-dev.csv", Exports::csv(sampleResult(), options));
}

TEST(Exports, NoticeReproducesTheTextOfTheChosenLicense) {
    const std::pair<std::string, std::string> cases[] = {
        {"MIT", "MIT text follows.]\n\nMIT License"},
        {"MIT OR GPL-3.0-only", "MIT text"},
        {"GPL-3.0-only OR Zlib", "Zlib text"},
        {"GPL-2.0-or-later", "GPL-2.0-or-later text follows.]\n\nGNU GENERAL PUBLIC LICENSE"},
        {"Apache-2.0 AND MIT", "Apache-2.0 text follows.]\n\nApache License"},
        {"BSD-4-Clause", ""},
        {"Custom", ""},
    };
    for (const auto& [license, introduced] : cases) {
        SCOPED_TRACE(license);
        const std::string notice = Exports::notice(resultOf({{.name = "p", .license = license}}), {});
        EXPECT_THAT(notice, HasSubstr(introduced.empty()
                                          ? "\n\n[No license text was found for this package."
                                          : "[No license file was included with this package. The standard " +
                                                introduced));
        EXPECT_THAT(notice, Not(EndsWith("\n\n")));  // a standard text is trimmed
    }
}

TEST(Exports, CsvGuardsFormulasAndQuotes) {
    const std::pair<std::string, std::string> cases[] = {
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
        {"a,b", "\"a,b\""},
        {"=\u0301x", "=\u0301x"},  // one character with its accent, so not "="
        {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"a\nb", "\"a\nb\""},
        {"a\rb", "\"a\rb\""},
        {"a\r\nb", "a\r\nb"},  // the pair is one character that is neither
        {"a\r\n\rb", "\"a\r\n\rb\""},
        {"a\u2028b;c", "a\u2028b;c"},
        {"=\",\"", "\"'=\"\",\"\"\""}};
    for (const auto& [name, written] : cases) {
        const std::string csv = Exports::csv(resultOf({{.name = name}}), {});
        EXPECT_THAT(csv, HasSubstr("\r\nSwiftPM," + written + ",,,Unknown,Not found,"));
    }
}

TEST(Exports, InvalidBytesInOptionsBecomeReplacementCharacters) {
    const ReportOptions options{.projectName = "caf\xE9", .appName = "\xFF"};
    const ScanResult result = resultOf({});
    EXPECT_THAT(Exports::notice(result, options), HasSubstr("NOTICES\ncaf\uFFFD\n"));
    EXPECT_THAT(Exports::notice(result, options), HasSubstr(" with \uFFFD. "));
    EXPECT_THAT(Exports::json(result, options),
                HasSubstr("\"generator\" : \"\uFFFD\",\n  \"project\" : \"caf\uFFFD\""));
    EXPECT_EQ(Exports::fileNames(options.projectName).csv, "caf\uFFFD Dependencies.csv");
}

TEST(Exports, FileNamesHoldNoSeparators) {
    EXPECT_EQ(Exports::fileNames("../a:c\\"),
              (Exports::FileNames{"..-a-c\\ License Report.pdf", "NOTICE.txt", "..-a-c\\ Dependencies.csv",
                                  "..-a-c\\ Dependencies.json"}));
}

}  // namespace
}  // namespace ScanKit

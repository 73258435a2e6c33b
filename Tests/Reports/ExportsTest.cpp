#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/ReportFormats.h"

#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;
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
        {"GPL-3.0-only OR Zlib", "Zlib text"},
        {"GPL-2.0-or-later", "GPL-2.0-or-later text follows.]\n\nGNU GENERAL PUBLIC LICENSE"},
        {"Apache-2.0 AND MIT", "Apache-2.0 text follows.]\n\nApache License"},
        {"BSD-4-Clause", ""},
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

TEST(Exports, NoticeReproducesEveryTextThatAppliesAndNamesTheOthers) {
    const auto linesInBrackets = [](const char* license) {
        const std::string notice = Exports::notice(resultOf({{.name = "p", .license = license}}), {});
        std::vector<std::string> lines;
        for (const std::string_view line : Text::nonEmptyLines(notice)) {
            if (line.starts_with("[The text") || line.starts_with("[No license")) {
                lines.emplace_back(line);
            }
        }
        return lines;
    };
    EXPECT_THAT(linesInBrackets("Apache-2.0 AND MIT AND Apache-2.0"),
                ElementsAre(HasSubstr("standard Apache-2.0 text"), HasSubstr("standard MIT text")));
    EXPECT_THAT(
        linesInBrackets("BSL-1.0 AND GPL-2.0-only WITH Classpath-exception-2.0"),
        ElementsAre(
            "[The text of BSL-1.0 is not included. See the package's source for it.]",
            HasSubstr("standard GPL-2.0-only text"),
            "[The text of Classpath-exception-2.0 is not included. See the package's source for it.]"));
    EXPECT_THAT(linesInBrackets("BSL-1.0 AND WTFPL"), ElementsAre(HasSubstr("No license text was found")));
}

TEST(Exports, CSVGuardsFormulasAndQuotes) {
    std::map<std::string, std::string> cases{
        {"\rx", "\"'\rx\""},          {"-1,5", "\"'-1,5\""},
        {"a,b", "\"a,b\""},           {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"a\nb", "\"a\nb\""},         {"a\rb", "\"a\rb\""},
        {"a\r\n\rb", "\"a\r\n\rb\""}, {"=\",\"", "\"'=\"\",\"\"\""}};
    // An accent makes one character of "=", and CR LF is one that is neither of the two.
    for (const std::string same : {"a", "", " =1", "-1", "+2.5", "+.5e-3", "a\r\nb", "a\u2028b;c"}) {
        cases[same] = same;
    }
    for (const std::string formula : {"=SUM(A1)", "=\u0301x", "@scope/name", "\tx", "-", "-1 ", "+1+1",
                                      "-0x10", "-inf", "+nan", "-1e999", "-1e", "+-1"}) {
        cases[formula] = "'" + formula;
    }
    for (const auto& [name, written] : cases) {
        const std::string csv = Exports::csv(resultOf({{.name = name}}), {});
        EXPECT_THAT(csv, HasSubstr("\r\nSwiftPM," + written + ",,,Unknown,Not found,"));
    }
}

TEST(Exports, TakeAnyBytesAndNamesOfFiles) {
    const ReportOptions options{.projectName = "../a:c\\\xE9", .appName = "\xFF"};
    EXPECT_THAT(Exports::notice(resultOf({}), options),
                ::testing::AllOf(HasSubstr("NOTICES\n../a:c\\\uFFFD\n"), HasSubstr(" with \uFFFD. ")));
    EXPECT_THAT(Exports::json(resultOf({}), options),
                HasSubstr("\"generator\" : \"\uFFFD\",\n  \"project\" : \"../a:c\\\\\uFFFD\""));
    const std::string stem = "..-a-c\\\uFFFD ";
    std::vector<std::string> names;
    for (const ReportFormat& format : reportFormats()) {
        names.push_back(fileName(format, options.projectName));
    }
    EXPECT_THAT(names, ::testing::ElementsAre(stem + "License Report.pdf", "NOTICE.txt",
                                              stem + "Dependencies.csv", stem + "Dependencies.json"));
}

}  // namespace
}  // namespace ScanKit

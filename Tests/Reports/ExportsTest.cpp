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
        expectGolden(std::string(name) + "-NOTICE.html", Exports::html(result, options));
        expectGolden(std::string(name) + ".csv", Exports::csv(result, options));
        expectGolden(std::string(name) + ".json", Exports::json(result, options));
    }
    options.includeDev = true;
    expectGolden("sample-with-dev.csv", Exports::csv(sampleResult(), options));
}

TEST(Exports, NoticeSaysWhatItReproducesForAPackageWithoutAText) {
    const auto standard = [](const std::string& name, const std::string& begin) {
        return "[No license file was included with this package. The standard " + name + " text follows.]\n" +
               begin;
    };
    const auto isNotIncluded = [](const std::string& name) {
        return "[The text of " + name + " is not included. See the package's source for it.]\n";
    };
    const auto gap = [](const std::string& line) {
        return "[Its line “" + line + "” is a placeholder: the year and the names are not known here.]\n";
    };
    const std::string mitGap = gap("Copyright (c) <year> <copyright holders>"),
                      none =
                          "[No license text was found for this package. See its source for license terms.]\n";
    const auto takes = [](const std::string& option) {
        return "[Offered under a choice of licenses. " + option + " is taken here.]\n";
    };
    struct Case {
        std::string license;
        std::vector<std::string> parts;  ///< in this order, each behind an empty line
    };
    const Case cases[]{
        {"MIT", {standard("MIT", mitGap + "\nMIT License\n\nCopyright (c) <year>")}},
        {"0BSD", {standard("0BSD", gap("Copyright (C) YEAR by AUTHOR EMAIL"))}},
        {"GPL-3.0-only OR Zlib", {takes("Zlib") + standard("Zlib", "\nzlib License\n")}},
        {"GPL-2.0-or-later", {standard("GPL-2.0-or-later", "\nGNU GENERAL PUBLIC LICENSE\n")}},
        {"Apache-2.0 AND MIT AND Apache-2.0",
         {standard("Apache-2.0", "\nApache License\n"), standard("MIT", mitGap + "\nMIT License\n")}},
        {"BSL-1.0 AND GPL-2.0-only WITH Classpath-exception-2.0",
         {isNotIncluded("BSL-1.0"), standard("GPL-2.0-only", "\nGNU"),
          isNotIncluded("Classpath-exception-2.0")}},
        {"Zlib AND (GPL-3.0-only OR (Unlicense AND BSL-1.0) OR CC0-1.0)",
         {takes("Zlib AND CC0-1.0") + standard("Zlib", "\nzlib"), standard("CC0-1.0", "\nCreative Commons")}},
        {"BSL-1.0 OR GPL-3.0-only", {none}},
        {"BSL-1.0 AND WTFPL", {none}},
        {"Custom terms", {none}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.license);
        std::string notice = Exports::notice(resultOf({{.name = "p", .license = one.license}}), {});
        std::size_t place = notice.rfind(std::string(78, '=')) + 79;
        for (const std::string& part : one.parts) {
            const std::size_t begin = notice.find("\n\n[", place - 1);
            ASSERT_NE(begin, std::string::npos) << "before: " << part;
            EXPECT_EQ(notice.substr(begin + 2, part.size()), part);
            place = begin + 2 + part.size();
        }
        EXPECT_EQ(notice.find("\n\n[", place), std::string::npos) << "something more";
        EXPECT_THAT(notice, Not(EndsWith("\n\n"))) << "a standard text is trimmed";
    }
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
    EXPECT_THAT(names,
                ::testing::ElementsAre(stem + "License Report.pdf", "NOTICE.txt", stem + "Dependencies.csv",
                                       stem + "Dependencies.json", "NOTICE.html"));
}

}  // namespace
}  // namespace ScanKit

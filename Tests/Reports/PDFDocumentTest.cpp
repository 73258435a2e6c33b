#include "ScanKit/Reports/PDFReport.h"

#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// What a command writes; a test failure unless it ends well.
std::string outputOf(const std::string& command) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
        output.append(part.data(), count);
    }
    EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
    return output;
}

/// A document in a file, looked at with the tools that its readers may use.
class Document {
public:
    explicit Document(const std::string& bytes) { folder_.write("report.pdf", bytes); }

    std::string text() const { return outputOf(QUORVANE_PDFTOTEXT " -layout " + file() + " -"); }
    std::string words() const { return outputOf(QUORVANE_PDFTOTEXT " -bbox " + file() + " -"); }
    std::string fonts() const { return outputOf(QUORVANE_PDFFONTS " " + file()); }
    std::string info() const { return outputOf("TZ=UTC " QUORVANE_PDFINFO " " + file() + " | tr -s ' '"); }
    std::string faults() const { return outputOf(QUORVANE_QPDF " --check " + file() + " 2>&1"); }

private:
    std::string file() const { return (folder_ / "report.pdf").string(); }
    TemporaryFolder folder_;
};

TEST(PDFDocument, ShowsItsTextInOrder) {
    const std::string text = Document(PDFReport::document(sampleResult(), sampleOptions())).text();
    std::size_t at = 0;
    for (const std::string expected : {"THIRD-PARTY LICENSE REPORT",
                                       "Démo: A/B",
                                       "Prepared for Client & Co.",
                                       "unknown or missing",
                                       "By ecosystem: 2 Swift packages",
                                       "Licenses",
                                       "AGPL-3.0",
                                       "Needs attention",
                                       "agpl-server",
                                       "Network copyleft (AGPL)",
                                       "=HYPERLINK(\"https://example.com\")",
                                       "All dependencies (6)",
                                       "@acme/übersicht",
                                       "2.0.0-beta.1",
                                       "-кит",
                                       "About this scan",
                                       "~/envs/\\odd\"name",
                                       "This report lists",
                                       "Not legal advice",
                                       "Page 2 of 2"}) {
        at = text.find(expected, at);
        ASSERT_NE(at, std::string::npos) << expected << " is not where it should be in\n" << text;
    }
}

TEST(PDFDocument, IsSoundAndCarriesItsFontsAndProperties) {
    const Document document(PDFReport::document(sampleResult(), sampleOptions()));
    EXPECT_THAT(document.faults(), HasSubstr("No syntax or stream encoding errors found"));
    const std::string info = document.info();
    for (const std::string line :
         {"Title: Démo: A/B License Report\n", "Author: Studio Nord\n", "Creator: Quorvane\n",
          "CreationDate: Mon Jan 5 14:03:22 2026 UTC\n", "ModDate: Mon Jan 5 14:03:22 2026 UTC\n",
          "Page size: 612 x 792 pts", "Tagged: yes\n"}) {
        EXPECT_THAT(info, HasSubstr(line));
    }
    // Below two lines of titles: name, type, encoding, then whether the font is embedded and a subset.
    std::istringstream fonts(document.fonts());
    std::size_t count = 0;
    for (std::string line; std::getline(fonts, line); ++count) {
        EXPECT_TRUE(count < 2 || line.find(" yes yes ") != std::string::npos) << line;
    }
    EXPECT_GT(count, 3U);
}

TEST(PDFDocument, IsSoundWithoutASingleLink) {
    const Document document(PDFReport::document(resultOf({}), {}));
    EXPECT_THAT(document.faults(), HasSubstr("No syntax or stream encoding errors found"));
    EXPECT_THAT(document.text(), HasSubstr("No dependencies found."));
    EXPECT_THAT(document.info(), Not(HasSubstr("Author")));
}

TEST(PDFDocument, DrawsNoWordOutsideTheMargins) {
    ScanResult result = sampleResult();
    result.dependencies.push_back(
        {.name = std::string(10'000, 'w'),
         .version = "עברית mixed עם English",
         .source = "https://example.com/" + std::string(3'000, '\''),
         .license = std::string(700, 'L'),
         .flags = {Flag::unknown},
         .notes = {std::string(200, '\x01') + std::string(4'000, 'n'), "\xF0\x9F"}});
    result.sources.insert(result.sources.end(), 2'000,
                          {Ecosystem::npm, "a/package-lock.json", "npm lockfile"});
    const Document document(PDFReport::document(result, {.projectName = std::string(10'000, 'P')}));
    EXPECT_THAT(document.faults(), HasSubstr("No syntax or stream encoding errors found"));

    std::istringstream words(document.words());
    std::size_t count = 0;
    for (std::string line; std::getline(words, line);) {
        double left = 0, top = 0, right = 0, bottom = 0;
        if (std::sscanf(line.c_str(), R"( <word xMin="%lf" yMin="%lf" xMax="%lf" yMax="%lf")", &left, &top,
                        &right, &bottom) == 4) {
            ++count;
            EXPECT_TRUE(left > 49.9 && top > 49 && right < 562.1 && bottom < 792 - 36) << line;
        }
    }
    EXPECT_GT(count, 4'000U);
}

TEST(PDFDocument, IsTheSameByteForByteOnAnyThread) {
    std::array<std::string, 3> documents;
    std::vector<std::thread> threads;
    for (std::string& document : documents) {
        threads.emplace_back([&] { document = PDFReport::document(sampleResult(), sampleOptions()); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_TRUE(documents[0] == documents[1] && documents[1] == documents[2]);
}

bool isSoundWithoutFonts() {
    const TemporaryFolder folder{{"fonts.conf", "<?xml version=\"1.0\"?><fontconfig></fontconfig>"}};
    const EnvironmentVariable fonts("FONTCONFIG_FILE", (folder / "fonts.conf").string());
    const Document document(PDFReport::document(sampleResult(), sampleOptions()));
    return document.faults().find("No syntax or stream encoding errors") != std::string::npos &&
           document.fonts().find("Nimbus") == std::string::npos;
}

TEST(PDFDocument, IsSoundWithoutFonts) {
    // In a program of its own: the list of fonts is read once.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(isSoundWithoutFonts() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace ScanKit

#include "ScanKit/Reports/PDF/PDFCanvas.h"

#include "ScanKit/Reports/PDF/PDFMissingScripts.h"
#include "ScanKit/Reports/PDF/PDFReport.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using String = PDFReport::AttributedString;

constexpr const char* sound = "No syntax or stream encoding errors found";

/// A document in a file, looked at with the tools that its readers may use.
class Document {
public:
    explicit Document(const std::string& bytes) { folder_.write("report.pdf", bytes); }

    std::string text() const { return seenBy(QUORVANE_PDFTOTEXT " -layout", " -"); }
    /// Below two lines of titles: name, type, encoding, then whether the font is embedded and a subset.
    std::string fontsNotEmbedded() const {
        return seenBy(QUORVANE_PDFFONTS, " | tail -n +3 | sed '/ yes yes /d'");
    }
    std::string links() const { return seenBy(QUORVANE_PDFINFO " -url"); }
    std::string info() const { return seenBy("TZ=UTC " QUORVANE_PDFINFO, " | tr -s ' '"); }
    std::string outline() const {
        return seenBy(QUORVANE_QPDF " --json --json-key=outlines", " | tr -d ' \\n'");
    }
    /// What a listener gets: the texts of the document's parts, each in quotes.
    std::string readAloud() const { return seenBy(QUORVANE_PDFINFO " -struct-text"); }
    std::string faults() const { return seenBy(QUORVANE_QPDF " --check"); }
    /// The first page's beginning with two pixels to a point, in grey.
    std::string picture() const {
        return seenBy(QUORVANE_PDFTOPPM " -r 144 -gray -l 1 -x 0 -y 0 -W 900 -H 500");
    }

private:
    /// What a command writes; a test failure unless it ends well.
    std::string seenBy(const std::string& tool, const std::string& end = "") const {
        const std::string output = (folder_ / "output").string();
        const std::string command = tool + " " + (folder_ / "report.pdf").string() + end + " >" + output;
        EXPECT_EQ(std::system(command.c_str()), 0) << command << "\n" << contentOf(output);
        return contentOf(output);
    }
    TemporaryFolder folder_;
};

/// What an operation leaves on a page: the edges of everything dark, in points, and the grey in its middle.
struct Ink {
    double left = 1'000, top = 1'000, right = 0, bottom = 0;
    int grey = 255;
};

Ink inkOf(const PDFReport::Page& page, PDFCanvas& canvas) {
    const std::string picture = Document(canvas.draw({.pages = {page}})).picture();
    std::istringstream header(picture);
    std::string kind;
    std::size_t width = 0, height = 0, most = 0;
    header >> kind >> width >> height >> most;
    const std::string_view pixels = std::string_view(picture).substr(picture.size() - width * height);
    Ink ink;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (static_cast<unsigned char>(pixels[i]) < 224) {
            const double x = static_cast<double>(i % width) / 2, y = static_cast<double>(i / width) / 2;
            ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 0.5),
                   std::max(ink.bottom, y + 0.5)};
        }
    }
    const auto middleOf = [](double from, double to) { return static_cast<std::size_t>(from + to); };
    const std::size_t middle = middleOf(ink.top, ink.bottom) * width + middleOf(ink.left, ink.right);
    ink.grey = ink.right > 0 ? static_cast<unsigned char>(pixels[middle]) : 255;
    return ink;
}

TEST(PDFCanvas, DrawsShapesInTheirPlacesAndColours) {
    PDFCanvas canvas;
    const PDFReport::Rectangle place{100, 200, 80, 10};
    const PDFReport::Colour blue{0.2, 0.5, 0.8};
    for (const auto& [what, op, ink] : {
             std::tuple<std::string, PDFReport::Op, Ink>{
                 "a square", PDFReport::Fill{place, blue}, {100, 200, 180, 210, 113}},
             {"a box, its line inside", PDFReport::Stroke{place, blue}, {100, 200, 180, 210, 255}},
             {"a line", PDFReport::Line{{100, 200}, {180, 200}, blue}, {100, 199.6, 180, 200.4, 113}},
         }) {
        const Ink drawn = inkOf({op}, canvas);
        EXPECT_TRUE(std::abs(drawn.left - ink.left) < 0.3 && std::abs(drawn.top - ink.top) < 0.3 &&
                    std::abs(drawn.right - ink.right) < 0.3 && std::abs(drawn.bottom - ink.bottom) < 0.3 &&
                    std::abs(drawn.grey - ink.grey) < 3)
            << what << " is drawn from " << drawn.left << ", " << drawn.top << " to " << drawn.right << ", "
            << drawn.bottom << " in grey " << drawn.grey;
    }
}

TEST(PDFCanvas, DrawsTextInsideItsRectangle) {
    const std::string marksAbove = "x\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301";
    const std::string marksBelow = "x\u0323\u0323\u0323\u0323\u0323\u0323\u0323\u0323\u0323";
    PDFCanvas canvas;
    for (const auto& [string, isRight] : {std::pair{String{"Hxxxxp"}, false},
                                          {String{"Hxxxxp"}, true},
                                          {String{.text = "Hxxxxp", .letterSpacing = 3}, false},
                                          {String{"שלום Hx"}, false},  // text runs from the left all the same
                                          {String{marksAbove}, false},
                                          {String{marksBelow}, false}}) {
        const double width = canvas.width(string), height = canvas.lines(string, 300).front().height;
        const Ink ink = inkOf({PDFReport::Text{string, {100, 200, 300, height}, isRight}}, canvas);
        const double left = isRight ? 400 - width : 100;
        EXPECT_TRUE(std::abs(ink.left - left) < 2 && std::abs(ink.right - left - width) < 4 &&
                    ink.top > 200 - 2 && ink.bottom < 200 + height + 2)
            << string.text << " of " << width << " points is drawn from " << ink.left << ", " << ink.top
            << " to " << ink.right << ", " << ink.bottom;
    }
}

TEST(PDFCanvas, HasTheFullStopOfHebrewOnItsLeft) {
    PDFCanvas canvas;
    const double width = canvas.width({"אאאא."});
    // All but the first letter's room is covered.
    for (const auto& [text, isDot] : {std::pair{"אאאא.", true}, {".אאאא", false}, {"K אאאא.", false}}) {
        const Ink ink = inkOf({PDFReport::Text{{text}, {100, 200, 300, 12}},
                               PDFReport::Fill{{102.2, 190, 2 * width, 40}, {1, 1, 1}}},
                              canvas);
        EXPECT_EQ(ink.bottom - ink.top < 2, isDot)
            << text << " begins with ink " << ink.bottom - ink.top << " high";
    }
}

TEST(PDFCanvas, UnderlinesWhatLeadsSomewhere) {
    PDFCanvas canvas;
    const auto bottomOf = [&](const std::optional<std::string>& link) {
        return inkOf({PDFReport::Text{{.text = "xxx", .link = link}, {100, 200, 300, 12}}}, canvas).bottom;
    };
    EXPECT_GE(bottomOf("https://example.com"), bottomOf(std::nullopt) + 0.5);
}

TEST(PDFCanvas, GoesOnBehindATextThatItClipped) {
    PDFCanvas canvas;
    const String marks{"x\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301\u0301"};
    const Ink ink =
        inkOf({PDFReport::Text{marks, {100, 200, 300, 12}}, PDFReport::Fill{{100, 230, 80, 10}, {}}}, canvas);
    EXPECT_NEAR(ink.bottom, 240, 1);
}

TEST(PDFCanvas, MeasuresSizeWeightAndSpacing) {
    PDFCanvas canvas;
    const std::string text = "Licenses";
    const double plain = canvas.width({text});
    EXPECT_NEAR(canvas.width({text, {.size = 18}}), 2 * plain, 0.1);
    EXPECT_GT(canvas.width({text, {.bold = true}}), plain + 1);
    EXPECT_NEAR(canvas.width({.text = text, .letterSpacing = 2}), plain + 8 * 2, 2.1);
    // A letter outside of plain text makes the canvas lay the whole text out.
    const auto line = canvas.lines({text}, 100).front(), laidOut = canvas.lines({text + "ı"}, 100).front();
    EXPECT_GT(canvas.lines({text + "ı"}, 20).size(), 1U) << "the same text in another width";
    EXPECT_NEAR(line.height, laidOut.height, 0.002);
    EXPECT_NEAR(line.baseline, laidOut.baseline, 0.002);
    EXPECT_GT(line.height, 9 * 1.2);
    const std::string ten = "WWWWWWWWWW";
    EXPECT_EQ(canvas.lines({ten}, canvas.width({ten}) + 1).size(), 1U);
    EXPECT_EQ(canvas.lines({.text = ten, .letterSpacing = 2}, canvas.width({ten}) * 1.15).size(), 2U);
    const std::string dashes = "——————————";  // each wider than three letters of its bytes
    EXPECT_EQ(canvas.lines({dashes}, canvas.width({dashes}) - 10).size(), 2U);
}

TEST(PDFCanvas, EndsNoLineInsideOfAWordThatFits) {
    PDFCanvas canvas;
    for (const auto& [text, widthOf, wanted] :
         {std::tuple{"Unrecognized: CC-BY-NC-4.0", "Unrecognized: CC-BY-", "Unrecognized: |CC-BY-NC-4.0"},
          {"(MIT OR LGPL-3.0-or-later)", "LGPL-3.0-or-later)", "(MIT OR |LGPL-3.0-or-later)"},
          {"“BSD-3-Clause”, read", "“BSD-3-Clause”,", "“BSD-3-Clause”, |read"},
          {"found on January 15, 2027. It", "found on January 15, ", "found on |January 15, 2027. It"},
          {"2023.10.1.post3", "2023.10.1.po", "2023.10.1.|post3"},
          {"10.20.30-alpha.1+build.7", "10.20.30-al", "10.20.30-|alpha.|1+build.7"},
          {"some-very-long-name", "some-very-lo", "some-very-|long-name"},
          {"web/some-app/file", "some-app/f", "web/|some-app/|file"},
          {"git@example.com:an-owner/kit", "git@example.com:an-owner", "git@example.com:an-|owner/kit"},
          {"library-文名-name-one", "library-文名-na", "library-文名-|name-one"}}) {
        std::string lines;
        std::size_t begin = 0;
        for (const auto& line : canvas.lines({text}, canvas.width({widthOf}) + 1)) {
            lines += (begin == 0 ? "" : "|") + std::string(text).substr(begin, line.end - begin);
            begin = line.end;
        }
        EXPECT_EQ(lines, wanted);
    }
}

TEST(PDFCanvas, SetsOtherScriptsNoWiderThanTheyNeed) {
    PDFCanvas canvas;
    const double plain = canvas.lines({"Licenses"}, 500).front().height;
    for (const char* text : {"ελληνικά", "кириллица", "עברית", "中文", "日本語", "한국어"}) {
        const double height = canvas.lines({text}, 500).front().height;
        EXPECT_TRUE(height > plain - 0.01 && height < plain * 1.25) << text << " has lines of " << height;
    }
    EXPECT_NEAR(canvas.lines({"Ünï"}, 500).front().height, plain, 0.01);
}

TEST(PDFCanvas, FillsEachLineToTheWidthAndNoFurther) {
    PDFCanvas canvas;
    const std::string words = "ä wörd after another-one/and@so on: 1234567890. ";
    for (const std::string& once :
         {words, std::string("plain wörds"), std::string("plain words, wide: WWWW "),
          std::string("nobreakatall"), std::string("名前"), std::string("кит")}) {
        String all;
        while (all.text.size() < (once == words ? 25'000 : 500)) {
            all.text += once;
        }
        SCOPED_TRACE(all.text.substr(0, 30));
        const auto lines = canvas.lines(all, 120);
        ASSERT_EQ(lines.back().end, all.text.size());
        for (std::size_t i = 0, begin = 0; i < lines.size(); begin = lines[i++].end) {
            const String line{all.text.substr(begin, lines[i].end - begin)};
            const String inked{line.text.substr(0, line.text.find_last_not_of(' ') + 1)};
            EXPECT_LE(canvas.width(inked), 120.01) << line.text;
            // What comes next does not fit.
            const String more{all.text.substr(begin, lines[std::min(i + 1, lines.size() - 1)].end - begin)};
            ASSERT_EQ(canvas.lines(more, 120).front().end, line.text.size()) << more.text;
        }
    }
}

TEST(PDFDocument, IsSoundAndCarriesItsTextFontsLinksAndProperties) {
    const Document document(PDFReport::document(sampleResult(), sampleOptions()));
    EXPECT_THAT(document.faults(), HasSubstr(sound));
    for (const std::string text : {"THIRD-PARTY LICENSE REPORT", "@acme/übersicht", "-кит", "Page 2 of 2"}) {
        EXPECT_THAT(document.text(), HasSubstr(text));
    }
    for (const std::string line :
         {"Title: Démo: A/B License Report\nAuthor: Studio Nord\nCreator: Quorvane\n", "Tagged: yes\n",
          "\nCreationDate: Mon Jan 5 14:03:22 2026 UTC\nModDate: Mon Jan 5 14:03:22 2026 UTC\n",
          "Page size: 612 x 792 pts"}) {
        EXPECT_THAT(document.info(), HasSubstr(line));
    }
    EXPECT_THAT(document.links(), HasSubstr("https://example.com/a/b?c=%22d%22&e=f\n"));
    EXPECT_THAT(document.outline(),
                ContainsRegex("\"destpageposfrom1\":1,[^}]*Licenses.*:2,[^}]*Aboutthisscan\""));
    EXPECT_EQ(document.fontsNotEmbedded(), "");
}

TEST(PDFDocument, IsSoundWithoutALinkAndWithAnyText) {
    for (const ScanResult& result : {resultOf({}), hostileResult()}) {
        const Document document(PDFReport::document(result, {.projectName = std::string(10'000, 'P')}));
        EXPECT_THAT(document.faults(), HasSubstr(sound));
    }
}

TEST(PDFDocument, IsReadAloudInWholeSentences) {
    std::string note;  // with lines that break, and letters that join
    for (int i = 0; i < 30; ++i) {
        note += "The office files of a flat raffle waffle; ";
    }
    note += "the end.";
    const Document document(
        PDFReport::document(resultOf({{.license = "MIT", .flags = {Flag::mismatch}, .notes = {note}}}), {}));
    EXPECT_THAT(document.readAloud(), HasSubstr("\"" + note + "\""));
}

TEST(PDFDocument, IsTheSameByteForByteOnAnyThread) {
    const auto document = [] { return PDFReport::document(sampleResult(), sampleOptions()); };
    std::future<std::string> first = std::async(std::launch::async, document);
    EXPECT_TRUE(document() == first.get());
}

/// What is wrong with a report that is made on a machine with the fonts of this configuration alone.
std::string faultWithFonts(const std::string& directories) {
    const TemporaryFolder folder{
        {"fonts.conf", "<?xml version=\"1.0\"?><fontconfig>" + directories + "</fontconfig>"}};
    const EnvironmentVariable fonts("FONTCONFIG_FILE", (folder / "fonts.conf").string());
    ScanResult result = sampleResult();
    result.dependencies.push_back({.name = "ภาษาไทย हिन्दी 한국어 😀 Ünïté Ελλάδα"});
    const Document document(PDFReport::document(result, sampleOptions()));
    for (const std::string shown : {"LICENSE REPORT", "@acme/übersicht", "-кит", "Ünïté Ελλάδα"}) {
        if (document.text().find(shown) == std::string::npos) {
            return "not drawn: " + shown;
        }
    }
    const std::string picture = document.picture();
    const auto dark =
        std::ranges::count_if(picture, [](char grey) { return static_cast<unsigned char>(grey) < 128; });
    if (dark < 1'000) {
        return "as good as empty";
    }
    const std::string expected =
        "The PDF report shows empty boxes for letters that no installed font has: Chinese, Devanagari, Korean and Thai."
        " Install a font for them (on Debian: fonts-noto-cjk and fonts-noto-core) and save the report again.";
    const std::string warning = PDFReport::warning(result, sampleOptions()).value_or("none");
    return warning == expected ? document.fontsNotEmbedded() : warning;
}

TEST(PDFDocument, IsDrawnWithoutAnyFontOnTheMachine) {
    // In a program of its own: the list of fonts is read once.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto check = [] {
        const std::string fault = faultWithFonts("");
        std::fputs(fault.c_str(), stderr);
        std::exit(fault.empty() ? 0 : 1);
    };
    EXPECT_EXIT(check(), ::testing::ExitedWithCode(0), "");
}

TEST(PDFMissingScripts, AreNamedWithThePackagesThatHaveThem) {
    using Characters = std::u32string;
    for (const auto& [characters, named, packages] :
         {std::tuple{Characters(U"ไ"), "has: Thai.", "(on Debian: fonts-noto-core)"},
          {Characters(U"名かハ한ไ"), "has: Chinese, Japanese, Korean and Thai.",
           "fonts-noto-cjk and fonts-noto-core)"},
          {Characters(U"😀"), "has: emoji.", "(on Debian: fonts-noto-color-emoji)"},
          {Characters(U"\U0001D7D8"), "has: symbols.", "(on Debian: fonts-noto-core)"},
          {Characters(U"\U00013000"), "has: Egyptian Hieroglyphs.", "(on Debian: fonts-noto-core)"},
          {Characters(U"\uE000"), "has: characters of no script.", "of no script."}}) {
        EXPECT_THAT(missingScriptsSentence(characters).value_or(""),
                    AllOf(HasSubstr(named), HasSubstr(packages)));
    }
    EXPECT_EQ(missingScriptsSentence({}), std::nullopt);
}

}  // namespace
}  // namespace ScanKit

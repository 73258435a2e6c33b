#include "ScanKit/Reports/PDFReport.h"

#include "ScanKit/Reports/PDFCanvas.h"
#include "ScanKit/Reports/PDFTable.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/Golden.h"
#include "Tests/Reports/SampleResult.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Not;

using Texts = std::vector<PDFReport::Text>;
using Strings = std::vector<std::string>;

PDFReport laidOut(const ScanResult& result, const ReportOptions& options = sampleOptions()) {
    PDFCanvas canvas;
    return PDFReport::laidOut(result, options, canvas);
}

bool isFurniture(const PDFReport::Text& text) {
    return text.rectangle.y >= PDFReport::footerRule;
}

Texts textsOf(const PDFReport::Page& page, bool furniture = false) {
    Texts texts;
    for (const PDFReport::Op& op : page) {
        if (const auto* text = std::get_if<PDFReport::Text>(&op); text && isFurniture(*text) == furniture) {
            texts.push_back(*text);
        }
    }
    return texts;
}

Strings stringsOf(const PDFReport::Page& page, bool furniture = false) {
    Strings strings;
    for (const PDFReport::Text& text : textsOf(page, furniture)) {
        strings.push_back(text.string.text);
    }
    return strings;
}

/// The texts of all pages in one list.
Strings bodyOf(const PDFReport& report) {
    Strings all;
    for (const PDFReport::Page& page : report.pages) {
        std::ranges::move(stringsOf(page), std::back_inserter(all));
    }
    return all;
}

struct Place {
    std::size_t page = 0;
    PDFReport::Text text;
};

/// Where the body shows exactly this text, page after page.
std::vector<Place> placesOf(const PDFReport& report, const std::string& string) {
    std::vector<Place> places;
    for (std::size_t page = 0; page < report.pages.size(); ++page) {
        for (const PDFReport::Text& text : textsOf(report.pages[page])) {
            if (text.string.text == string) {
                places.push_back({page, text});
            }
        }
    }
    return places;
}

bool isHeading(const PDFReport::Text& text) {
    return text.string.font == PDFReport::Font{.size = 14, .bold = true};
}

bool isColumnTitle(const PDFReport::Text& text) {
    return text.string.font == PDFReport::Font{.size = 7.5, .bold = true};
}

/// Rows of one to many lines, some flagged, so that tables end and begin at every height of a page.
ScanResult longResult(std::size_t count) {
    ScanResult result = resultOf({});
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        Dependency dependency{.name = "package-" + number + std::string(i % 7 * 20, 'x'),
                              .version = "v" + number,
                              .source = "https://example.com/" + number,
                              .isDev = i % 5 == 0,
                              .license = "License-" + std::to_string(i % 40),
                              .category = LicenseCategory::permissive};
        if (i % 3 == 0) {
            dependency.flags = {Flag::mismatch, Flag::noLicenseFile};
            dependency.notes =
                Strings(i % 11, "A note that takes more than one line of its cell, " + number + ".");
        }
        result.dependencies.push_back(std::move(dependency));
    }
    return result;
}

void expectInsideTheMargins(const Texts& texts) {
    for (const auto& [string, rectangle, right] : texts) {
        SCOPED_TRACE(string.text);
        EXPECT_GE(rectangle.x, 50);
        EXPECT_LE(rectangle.x + rectangle.width, 562.001);
        EXPECT_GE(rectangle.y, 50);
        EXPECT_LE(rectangle.y + rectangle.height, PDFReport::contentEnd + 0.02);
    }
}

TEST(PDFReport, StaysInsideTheMarginsAndItsCells) {
    const PDFReport report = laidOut(longResult(400));
    ASSERT_GT(report.pages.size(), 10U);
    for (const PDFReport::Page& page : report.pages) {
        const Texts texts = textsOf(page);
        expectInsideTheMargins(texts);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                const PDFReport::Rectangle &a = texts[i].rectangle, &b = texts[j].rectangle;
                const bool apart = a.x + a.width <= b.x || b.x + b.width <= a.x ||
                                   a.y + a.height <= b.y + 0.01 || b.y + b.height <= a.y + 0.01;
                EXPECT_TRUE(apart) << texts[i].string.text << " lies over " << texts[j].string.text;
            }
        }
    }
}

TEST(PDFReport, EveryPageHasTheFurniture) {
    const PDFReport report = laidOut(longResult(100));
    for (std::size_t i = 0; i < report.pages.size(); ++i) {
        EXPECT_THAT(
            stringsOf(report.pages[i], true),
            ElementsAre("Démo: A/B · Third-party license report · January 5, 2026 · Not legal advice",
                        "Quorvane",
                        "Page " + std::to_string(i + 1) + " of " + std::to_string(report.pages.size())));
        EXPECT_THAT(report.pages[i],
                    Contains(::testing::VariantWith<PDFReport::Line>(::testing::AllOf(
                        ::testing::Field(&PDFReport::Line::from, PDFReport::Point{50, 792 - 66}),
                        ::testing::Field(&PDFReport::Line::to, PDFReport::Point{562, 792 - 66})))));
    }
}

TEST(PDFReport, RepeatsTheHeaderAndSplitsNoRow) {
    const ScanResult result = longResult(400);
    const PDFReport report = laidOut(result, {.projectName = "p", .includeDev = true});
    for (std::size_t i = 1; i < report.pages.size(); ++i) {
        const Texts texts = textsOf(report.pages[i]);
        EXPECT_TRUE(isColumnTitle(texts.front()) || isHeading(texts.front())) << "page " << i + 1;
        EXPECT_FALSE(isColumnTitle(texts.back())) << "page " << i + 1;
    }
    for (const Dependency& dependency : result.dependencies) {
        SCOPED_TRACE(dependency.name);
        const auto names = placesOf(report, dependency.name);
        const auto versions = placesOf(report, dependency.version);
        ASSERT_EQ(names.size(), dependency.needsReview() ? 2U : 1U);
        ASSERT_EQ(versions.size(), names.size());
        for (std::size_t i = 0; i < names.size(); ++i) {
            EXPECT_EQ(names[i].page, versions[i].page);
            EXPECT_NEAR(names[i].text.rectangle.y, versions[i].text.rectangle.y, 0.01);
        }
        if (!dependency.notes.empty()) {
            const auto notes = placesOf(report, dependency.notes.front());
            ASSERT_EQ(notes.size(), dependency.notes.size());
            EXPECT_EQ(notes.front().page, names.front().page);
            EXPECT_EQ(notes.back().page, names.front().page);
        }
    }
}

TEST(PDFReport, NoHeadingStandsAloneAtThePagesFoot) {
    std::size_t headings = 0;
    // Every length of the license table puts the next headings at another height.
    for (std::size_t count = 2; count < 40; ++count) {
        for (const PDFReport::Page& page : laidOut(longResult(count)).pages) {
            const Texts texts = textsOf(page);
            expectInsideTheMargins(texts);
            for (std::size_t i = 0; i < texts.size(); ++i) {
                if (isHeading(texts[i])) {
                    ++headings;
                    const auto row = std::find_if_not(texts.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                                      texts.end(), isColumnTitle);
                    ASSERT_NE(row, texts.end()) << texts[i].string.text << ", " << count << " packages";
                    EXPECT_FALSE(isHeading(*row));
                }
            }
        }
    }
    EXPECT_EQ(headings, 38U * 4);
}

TEST(PDFReport, GoesOnOnTheNextPagesWithARowHigherThanOne) {
    std::string name;
    for (int i = 0; i < 2'500; ++i) {
        name += "äb" + std::to_string(i % 10) + (i % 50 == 0 ? "-" : "");
    }
    ScanResult result = longResult(1);
    result.dependencies.push_back({.name = name, .version = "tall"});
    result.dependencies.push_back({.name = "next", .version = "after"});
    const PDFReport report = laidOut(result, {.includeDev = true});

    const Place tall = placesOf(report, "tall").at(0), next = placesOf(report, "next").at(0);
    ASSERT_GT(next.page, tall.page + 1);
    std::string shown;
    for (std::size_t i = tall.page; i <= next.page; ++i) {
        for (const PDFReport::Text& text : textsOf(report.pages[i])) {
            if (text.string.text.starts_with("äb") || text.string.text.find("äb") != std::string::npos) {
                shown += text.string.text;
            }
        }
        EXPECT_TRUE(i == tall.page || isColumnTitle(textsOf(report.pages[i]).front()));
    }
    EXPECT_EQ(shown, name);
}

TEST(PDFReport, BeginsWithTheTitleBlockAtItsPlace) {
    const Texts texts = textsOf(laidOut(sampleResult()).pages.front());
    EXPECT_EQ(texts[0].string.text, "THIRD-PARTY LICENSE REPORT");
    EXPECT_EQ(texts[0].string.font, (PDFReport::Font{.size = 9}));
    EXPECT_EQ(texts[0].string.letterSpacing, 1.2);
    EXPECT_EQ(texts[1].string.text, "Démo: A/B");
    EXPECT_EQ(texts[1].string.font, (PDFReport::Font{.size = 24, .bold = true}));
    EXPECT_EQ(texts[2].string.text,
              "Prepared for Client & Co.  ·  Prepared by Studio Nord  ·  January 5, 2026");
    EXPECT_EQ(texts[2].string.font, (PDFReport::Font{.size = 10}));
    EXPECT_EQ(texts[0].rectangle.y, 50);
    const auto gapAbove = [&](std::size_t i) {
        return texts[i].rectangle.y - texts[i - 1].rectangle.y - texts[i - 1].rectangle.height;
    };
    EXPECT_NEAR(gapAbove(1), 4, 0.001);
    EXPECT_NEAR(gapAbove(2), 4, 0.001);
}

TEST(PDFReport, MetaLineNamesOnlyWhomItKnows) {
    const auto meta = [](const ReportOptions& options) {
        return bodyOf(laidOut(resultOf({}), options)).at(2);
    };
    EXPECT_EQ(meta({.projectName = "p"}), "January 5, 2026");
    EXPECT_EQ(meta({.projectName = "p", .preparedFor = "X"}), "Prepared for X  ·  January 5, 2026");
    EXPECT_EQ(meta({.projectName = "p", .preparedBy = "Y\tZ"}), "Prepared by Y Z  ·  January 5, 2026");
}

TEST(PDFReport, AnEmptyResultHasOnePage) {
    const PDFReport report = laidOut(resultOf({}));
    ASSERT_EQ(report.pages.size(), 1U);
    EXPECT_THAT(
        bodyOf(report),
        ElementsAre("THIRD-PARTY LICENSE REPORT", "Démo: A/B", ::testing::_, "0", "dependencies", "0",
                    "need review", "0", "copyleft", "0", "unknown or missing", "No dependencies found.",
                    "About this scan", "Found in", "/projects/demo", ::testing::StartsWith("This report")));
}

TEST(PDFReport, ReadsInOrder) {
    const EnvironmentVariable zone{"TZ", "UTC"};
    std::string lines;
    for (const PDFReport::Page& page : laidOut(sampleResult()).pages) {
        for (const PDFReport::Text& text : textsOf(page)) {
            // Where tables go on depends on the fonts of the machine.
            lines += isColumnTitle(text) ? "" : text.string.text + "\n";
        }
    }
    expectGolden("sample-report.txt", lines);
}

TEST(PDFReport, SetsTheLicenseTableInItsColumns) {
    const Texts texts = textsOf(laidOut(sampleResult()).pages.front());
    const auto heading = std::ranges::find_if(texts, isHeading);
    struct Cell {
        std::string text;
        double x;
        bool right;
    };
    const Cell cells[] = {{"License", 50, false},
                          {"Type", 50 + 512 * 0.52, false},
                          {"Packages", 562, true},
                          {"AGPL-3.0", 50, false},
                          {"Network copyleft", 50 + 512 * 0.52, false},
                          {"1", 562, true}};
    auto text = heading + 1;
    for (const auto& [string, x, right] : cells) {
        SCOPED_TRACE(string);
        EXPECT_EQ(text->string.text, string);
        EXPECT_EQ(text->right, right);
        EXPECT_NEAR(text->rectangle.x + (right ? text->rectangle.width : 0), x, 0.001);
        ++text;
    }
}

TEST(PDFReport, TellsHowDevOnlyPackagesAreTreated) {
    ScanResult result = resultOf({{.name = "shipped"}, {.name = "tool", .isDev = true}});
    const Strings without = bodyOf(laidOut(result, {}));
    EXPECT_THAT(without, Contains("By ecosystem: 1 Swift packages  (dev-only packages left out)"));
    EXPECT_THAT(without, Not(Contains("tool")));
    EXPECT_THAT(without, Not(Contains("Dev only")));
    const Strings with = bodyOf(laidOut(result, {.includeDev = true}));
    EXPECT_THAT(with, Contains("By ecosystem: 2 Swift packages  (including dev-only packages)"));
    EXPECT_THAT(with, Contains("tool"));
    EXPECT_THAT(with, Contains("Dev only"));
    EXPECT_EQ(std::ranges::count(with, "yes"), 1);
}

TEST(PDFReport, SaysWhenNothingNeedsAttention) {
    const Strings body = bodyOf(laidOut(resultOf({{.name = "p", .flags = {Flag::noLicenseFile}}})));
    EXPECT_THAT(body,
                Contains("Nothing needs attention: every dependency has a recognized license that doesn't "
                         "require sharing your code."));
    EXPECT_THAT(body, Not(Contains("Severity")));
}

TEST(PDFReport, ShowsSeverityWithoutColour) {
    for (const auto& [flag, filled, word] :
         {std::tuple{Flag(Flag::missing), 3, "High"}, {Flag::mismatch, 2, "Medium"}}) {
        const PDFReport report = laidOut(resultOf({{.name = "p", .flags = {flag, Flag::noLicenseFile}}}));
        const auto isFill = [](const PDFReport::Op& op) {
            return std::holds_alternative<PDFReport::Fill>(op);
        };
        EXPECT_EQ(std::ranges::count_if(report.pages.front(), isFill), filled);
        EXPECT_THAT(bodyOf(report), Contains(word));
    }
}

TEST(PDFReport, HasAnOutlineOfItsSections) {
    const PDFReport report = laidOut(longResult(300));
    Strings titles;
    for (const auto& [title, page, y] : report.outline) {
        titles.push_back(title);
        ASSERT_EQ(placesOf(report, title).size(), 1U);
        EXPECT_EQ(placesOf(report, title).front().page, page);
        EXPECT_EQ(placesOf(report, title).front().text.rectangle.y, y);
    }
    EXPECT_THAT(titles,
                ElementsAre("Licenses", "Needs attention", "All dependencies (240)", "About this scan"));
}

TEST(PDFReport, ShortensALongNameInTheFooterAlone) {
    const std::string name = "Ünï" + std::string(10'000, 'W');
    PDFCanvas canvas;
    const PDFReport report = PDFReport::laidOut(resultOf({}), {.projectName = name}, canvas);
    EXPECT_GT(report.pages.size(), 1U);
    const PDFReport::Text footer = textsOf(report.pages.front(), true).front();
    EXPECT_THAT(footer.string.text,
                EndsWith("WW… · Third-party license report · January 5, 2026 · Not legal advice"));
    EXPECT_LE(canvas.width(footer.string), footer.rectangle.width);
    EXPECT_EQ(canvas.lines(footer.string, footer.rectangle.width).size(), 1U);
}

TEST(PDFReport, PackageNamesLeadToTheirSource) {
    for (const auto& [source, link] :
         {std::pair<std::string, std::optional<std::string>>{"https://example.com/a",
                                                             "https://example.com/a"},
          {"HTTP://example.com/ä b", "HTTP://example.com/%C3%A4%20b"},
          {"https://e.com/'\\(x)<\"y\">\n", "https://e.com/%27%5C%28x%29%3C%22y%22%3E%0A"},
          {"javascript:alert(1)", {}},
          {"file:///etc/passwd", {}},
          {"git+https://example.com/a.git", {}},
          {"https:example.com", {}},
          {"http", {}},
          {"", {}}}) {
        SCOPED_TRACE(source);
        const PDFReport report = laidOut(resultOf({{.name = "the-package", .source = source}}));
        EXPECT_EQ(placesOf(report, "the-package").at(0).text.string.link, link);
    }
}

TEST(PDFTable, CellsOfARowStandOnOneLine) {
    PDFCanvas canvas;
    PDFLayout layout(canvas);
    PDFTable table(layout, {{"A", 0.5}, {"B", 0.5}});
    const PDFReport::AttributedString small{.text = "small", .font = {.size = 8}},
        large{.text = "large", .font = {.size = 30}};
    table.addRow({{{.string = small}}, {{.string = large}}});
    const Texts texts = textsOf(layout.takePages().front());
    EXPECT_NEAR(texts[2].rectangle.y + canvas.lines(small, 200).front().baseline,
                texts[3].rectangle.y + canvas.lines(large, 200).front().baseline, 0.01);
}

TEST(PDFText, ShowsWhatCannotBeDrawnAsBlanks) {
    for (const auto& [text, shown] : {std::pair{"plain", "plain"},
                                      {"a\tb\r\nc", "a b  c"},
                                      {"\x01\x7F\u0085\u009F\u2028\u2029", "      "},
                                      {"\xFFx", "\uFFFDx"},
                                      {"evil\u202Egpj\u202C.exe\u2066\u2069", "evilgpj.exe"},
                                      {"שלום 名前 😀", "שלום 名前 😀"}}) {
        EXPECT_EQ(displayText(text), shown);
    }
    EXPECT_EQ(displayText(std::string("a\0b", 3)), "a b");
}

TEST(PDFCanvas, BreaksLongTextsAsItBreaksShortOnes) {
    PDFCanvas canvas;
    PDFReport::AttributedString once{.text = "ä wörd after another-one/and@so on: 1234567890. "};
    PDFReport::AttributedString all = once;
    for (int i = 0; i < 500; ++i) {
        all.text += once.text;
    }
    const auto lines = canvas.lines(all, 120);
    EXPECT_EQ(lines.back().end, all.text.size());
    const std::string_view text = all.text;
    for (std::size_t i = 0, begin = 0; i + 1 < lines.size(); begin = lines[i++].end) {
        // A line is full: what comes next does not fit into it.
        const PDFReport::AttributedString both{.text =
                                                   std::string(text.substr(begin, lines[i + 1].end - begin))};
        ASSERT_EQ(canvas.lines(both, 120).front().end, lines[i].end - begin) << both.text;
    }
}

TEST(PDFCanvas, MeasuresPlainTextAsItLaysItOut) {
    PDFCanvas canvas;
    for (const std::string text : {"AVAVAVAVAVAV", "fi ffl WAWA", "iiiiiiiiiiiiiiii", "wide WWWWWWWW"}) {
        const PDFReport::AttributedString string{.text = text};
        const double width = canvas.width(string);
        // A letter outside of plain text makes the canvas lay the whole text out.
        const auto plain = canvas.lines(string, width * 1.2),
                   full = canvas.lines({.text = text + "ı"}, width * 2);
        ASSERT_EQ(plain.size(), 1U);
        EXPECT_NEAR(plain.front().height, full.front().height, 0.002);
        EXPECT_NEAR(plain.front().baseline, full.front().baseline, 0.002);
        EXPECT_EQ(canvas.lines(string, width + 0.1).size(), 1U) << text;
        EXPECT_GT(canvas.lines(string, width * 0.9).size(), 1U) << text;
    }
}

}  // namespace
}  // namespace ScanKit

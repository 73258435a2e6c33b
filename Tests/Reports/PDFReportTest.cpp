#include "ScanKit/Reports/PDFReport.h"

#include "ScanKit/Reports/PDFCanvas.h"
#include "ScanKit/Reports/PDFTable.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/Golden.h"
#include "Tests/Reports/SampleResult.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using ::testing::ElementsAre;

using Texts = std::vector<PDFReport::Text>;
using Strings = std::vector<std::string>;

PDFReport laidOut(const ScanResult& result, const ReportOptions& options = sampleOptions()) {
    PDFCanvas canvas;
    return PDFReport::laidOut(result, options, canvas);
}

Texts textsOf(const PDFReport::Page& page, bool inFooter = false) {
    Texts texts;
    for (const PDFReport::Op& op : page) {
        const auto* text = std::get_if<PDFReport::Text>(&op);
        if (text != nullptr && (text->rectangle.y >= PDFReport::footerRule) == inFooter) {
            texts.push_back(*text);
        }
    }
    return texts;
}

bool isHeading(const PDFReport::Text& text) {
    return text.string.font == PDFReport::Font{.size = 14, .bold = true};
}

bool isColumnTitle(const PDFReport::Text& text) {
    return text.string.font == PDFReport::Font{.size = 7.5, .bold = true};
}

struct Place {
    std::size_t page = 0;
    double y = 0;
};

/// Where the body shows each text, page after page.
std::multimap<std::string, Place> placesIn(const PDFReport& report) {
    std::multimap<std::string, Place> places;
    for (std::size_t page = 0; page < report.pages.size(); ++page) {
        for (const PDFReport::Text& text : textsOf(report.pages[page])) {
            places.emplace(text.string.text, Place{page, text.rectangle.y});
        }
    }
    return places;
}

/// Writes down one operation after the other, leaving out what depends on the fonts of the machine: the heights,
/// and the rows of titles where tables go on.
class Description {
public:
    std::string of(const PDFReport& report) {
        for (const PDFReport::Page& page : report.pages) {
            goesOn_ = &page != &report.pages.front();
            for (const PDFReport::Op& op : page) {
                std::visit(*this, op);
            }
        }
        return lines_.str();
    }

    void operator()(const PDFReport::Text& text) {
        goesOn_ = goesOn_ && isColumnTitle(text);
        if (!goesOn_ && text.rectangle.y < PDFReport::footerRule) {
            const auto& [string, font, colour, letterSpacing, link] = text.string;
            add(text.rectangle, colour)
                << (text.right ? " right " : " ") << font.size << (font.bold ? " bold" : "");
            lines_ << (letterSpacing > 0 ? " spaced " : " ") << string << (link ? " -> " + *link : "")
                   << "\n";
        }
    }
    void operator()(const PDFReport::Fill& fill) { add(fill.rectangle, fill.colour) << " filled\n"; }
    void operator()(const PDFReport::Stroke& box) { add(box.rectangle, box.colour) << " box\n"; }
    void operator()(const PDFReport::Line& line) {
        EXPECT_EQ(line.from.y, line.to.y);
        if (!goesOn_ && line.from.y < PDFReport::footerRule) {
            add({.x = line.from.x, .width = line.to.x - line.from.x}, line.colour) << " line\n";
        }
    }

private:
    std::ostream& add(const PDFReport::Rectangle& place, const PDFReport::Colour& colour) {
        lines_ << place.x << "+" << place.width << " ";
        const auto percent = [](double part) { return std::lround(part * 100); };
        lines_ << percent(colour.red) << "/" << percent(colour.green) << "/" << percent(colour.blue);
        return lines_;
    }
    std::ostringstream lines_;
    bool goesOn_ = false;
};

TEST(PDFReport, SaysEverythingInItsOrderPlaceAndLook) {
    const EnvironmentVariable zone{"TZ", "UTC"};
    ReportOptions withDev = sampleOptions();
    withDev.includeDev = true;
    withDev.preparedFor = "X\tY";
    expectGolden("sample-report.txt", Description().of(laidOut(sampleResult())));
    expectGolden("sample-report-with-dev.txt", Description().of(laidOut(sampleResult(), withDev)));
    expectGolden("empty-report.txt", Description().of(laidOut(resultOf({}), {.projectName = "p"})));
    const ScanResult unremarkable =
        resultOf({{.name = "p", .license = "MIT", .flags = {Flag::noLicenseFile}}});
    expectGolden("unremarkable-report.txt", Description().of(laidOut(unremarkable, {.preparedBy = "Y"})));
}

/// Rows of one to many lines, some flagged, so that tables end and begin at every height of a page.
ScanResult longResult(std::size_t count) {
    ScanResult result = resultOf({});
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        Dependency dependency{.name = "package-" + number + std::string(i % 7 * 20, 'x'),
                              .version = "v" + number,
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

/// What is drawn keeps the margins, and its distance from what else is drawn.
void expectApartInsideTheMargins(const PDFReport::Page& page) {
    const Texts texts = textsOf(page);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const PDFReport::Rectangle& a = texts[i].rectangle;
        EXPECT_TRUE(a.x >= 50 && a.x + a.width <= 562.001 && a.y >= 50 &&
                    a.y + a.height <= PDFReport::contentEnd + 0.02)
            << "outside the margins: " << texts[i].string.text;
        for (std::size_t j = 0; j < i; ++j) {
            const PDFReport::Rectangle& b = texts[j].rectangle;
            const bool isApart = a.x + a.width <= b.x - 9.99 || b.x + b.width <= a.x - 9.99 ||
                                 a.y + a.height <= b.y + 0.01 || b.y + b.height <= a.y + 0.01;
            EXPECT_TRUE(isApart) << texts[i].string.text << " comes too near to " << texts[j].string.text;
        }
        for (const PDFReport::Op& op : page) {
            const auto* line = std::get_if<PDFReport::Line>(&op);
            EXPECT_TRUE(line == nullptr || line->from.y <= a.y - 3.99 ||
                        line->from.y >= a.y + a.height + 3.99)
                << texts[i].string.text << " comes too near to a line";
        }
        if (i > 0 && isHeading(texts[i]) && a.y > 50) {
            EXPECT_GE(a.y - texts[i - 1].rectangle.y - texts[i - 1].rectangle.height, 18)
                << "above " << texts[i].string.text;
        }
    }
}

TEST(PDFReport, IsSetWellAtEveryLength) {
    // Every length of the license table puts what follows at another height.
    for (std::size_t count :
         {2, 3, 4, 5, 7, 8, 9, 10, 12, 13, 14, 15, 17, 18, 19, 20, 23, 25, 28, 30, 33, 38, 400}) {
        SCOPED_TRACE(std::to_string(count) + " packages");
        const PDFReport report = laidOut(longResult(count));
        std::vector<PDFReport::Bookmark> headings;
        for (std::size_t i = 0; i < report.pages.size(); ++i) {
            SCOPED_TRACE("page " + std::to_string(i + 1));
            expectApartInsideTheMargins(report.pages[i]);
            Strings footer;
            for (const PDFReport::Text& text : textsOf(report.pages[i], true)) {
                footer.push_back(text.string.text);
            }
            EXPECT_THAT(
                footer,
                ElementsAre("Démo: A/B · Third-party license report · January 5, 2026 · Not legal advice",
                            "Quorvane",
                            "Page " + std::to_string(i + 1) + " of " + std::to_string(report.pages.size())));
            const Texts texts = textsOf(report.pages[i]);
            for (auto text = texts.begin(); text != texts.end(); ++text) {
                if (isHeading(*text)) {
                    headings.push_back({text->string.text, i, text->rectangle.y});
                    const auto row = std::find_if_not(text + 1, texts.end(), isColumnTitle);
                    EXPECT_TRUE(row != texts.end() && !isHeading(*row))
                        << text->string.text << " stands alone";
                }
            }
            EXPECT_TRUE(i == 0 || isColumnTitle(texts.front()) || isHeading(texts.front()))
                << "goes on untitled";
            EXPECT_FALSE(isColumnTitle(texts.back())) << "ends with titles";
        }
        EXPECT_EQ(report.outline, headings);
        EXPECT_EQ(headings.size(), 4U);
    }
}

TEST(PDFReport, SplitsNoRow) {
    const ScanResult result = longResult(400);
    const auto places = placesIn(laidOut(result, {.projectName = "p", .includeDev = true}));
    for (const Dependency& dependency : result.dependencies) {
        SCOPED_TRACE(dependency.name);
        const std::size_t rows = dependency.needsReview() ? 2 : 1;
        ASSERT_EQ(places.count(dependency.name), rows);
        ASSERT_EQ(places.count(dependency.version), rows);
        auto name = places.find(dependency.name);
        auto version = places.find(dependency.version);
        if (!dependency.notes.empty()) {
            const auto [note, end] = places.equal_range(dependency.notes.front());
            EXPECT_EQ(std::distance(note, end), std::ssize(dependency.notes));
            EXPECT_EQ(note->second.page, name->second.page);
            EXPECT_EQ(std::prev(end)->second.page, name->second.page);
        }
        for (std::size_t row = 0; row < rows; ++row, ++name, ++version) {
            EXPECT_EQ(name->second.page, version->second.page);
            EXPECT_NEAR(name->second.y, version->second.y, 0.01);
        }
    }
}

TEST(PDFReport, GoesOnOnTheNextPagesWithARowHigherThanOne) {
    std::string name;
    for (int i = 0; i < 2'500; ++i) {
        name += "äb" + std::to_string(i % 10) + (i % 50 == 0 ? "-" : "");
    }
    ScanResult result = longResult(1);
    result.dependencies.push_back({.name = name, .version = "tall", .flags = {Flag::missing}});
    result.dependencies.push_back({.name = "next", .version = "after"});
    const PDFReport report = laidOut(result, {.includeDev = true});
    const auto places = placesIn(report);
    // In both tables: with what needs attention, and with all dependencies.
    const auto first = places.lower_bound("tall"), second = std::next(first);
    EXPECT_EQ(first->second.page, 0U) << "it begins at the foot of a page that has room for a part of it";
    ASSERT_GT(places.find("next")->second.page, second->second.page + 1);
    std::string shown;
    std::size_t squares = 0;
    for (const PDFReport::Page& page : report.pages) {
        const Texts texts = textsOf(page);
        EXPECT_TRUE(&page == &report.pages.front() || isColumnTitle(texts.front()))
            << texts.front().string.text;
        for (const PDFReport::Text& text : texts) {
            shown += text.string.text.find("äb") != std::string::npos ? text.string.text : "";
        }
        squares += static_cast<std::size_t>(std::ranges::count_if(
            page, [](const PDFReport::Op& op) { return std::holds_alternative<PDFReport::Fill>(op); }));
    }
    EXPECT_EQ(shown, name + name);
    EXPECT_EQ(squares, 2U + 3U) << "the severities are drawn once";
}

TEST(PDFReport, ShortensALongNameInTheFooterAlone) {
    const std::string rest = " · Third-party license report · January 5, 2026 · Not legal advice";
    for (const std::size_t letters : {1U, 10U, 40U, 60U, 150U, 199U, 201U, 10'000U}) {
        SCOPED_TRACE(std::to_string(letters) + " letters");
        std::string name = "Ü";
        name.append(letters, 'W');
        PDFCanvas canvas;
        const PDFReport report = PDFReport::laidOut(resultOf({}), {.projectName = name}, canvas);
        const PDFReport::Text footer = textsOf(report.pages.front(), true).front();
        PDFReport::AttributedString whole = footer.string;
        whole.text = name + rest;
        const double width = footer.rectangle.width;
        if (canvas.width(whole) <= width) {
            EXPECT_EQ(footer.string.text, whole.text);
            continue;
        }
        const std::string kept = footer.string.text.substr(0, footer.string.text.find("…"));
        EXPECT_EQ(footer.string.text, kept + "…" + rest);
        EXPECT_LE(canvas.width(footer.string), width) << "it does not fit";
        EXPECT_EQ(canvas.lines(footer.string, width).size(), 1U);
        whole.text = kept + "W…" + rest;
        EXPECT_GT(canvas.width(whole), width) << "one more letter would fit";
    }
}

TEST(PDFReport, DocumentPropertiesAreText) {
    const PDFReport report =
        laidOut(resultOf({}), {.projectName = "a\nb", .preparedBy = "\xFF", .appName = "Other"});
    EXPECT_EQ(report.properties,
              (PDFReport::Properties{"a b License Report", "\uFFFD", "Other", resultOf({}).scannedAt}));
    EXPECT_EQ(textsOf(report.pages.front(), true).at(1).string.text, "Other");
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
                                      {"\x01\x7F\u0080\u009F\u00A0\u2028\u2029", "    \u00A0  "},
                                      {"\xFFx", "\uFFFDx"},
                                      {"evil\u202Agpj\u202E.exe\u2066\u2069", "evilgpj.exe"},
                                      {"שלום 名前 😀", "שלום 名前 😀"}}) {
        EXPECT_EQ(displayText(text), shown);
    }
    EXPECT_EQ(displayText(std::string("a\0b", 3)), "a b");
}

TEST(PDFText, LeadsOnlyToAddressesOfTheWeb) {
    for (const auto& [source, link] :
         {std::pair<std::string, std::optional<std::string>>{"https://e.com/a?b=c#~",
                                                             "https://e.com/a?b=c#~"},
          {"HTTP://example.com/ä b", "HTTP://example.com/%C3%A4%20b"},
          {"https://e.com/'\\(x)<\"y\">\n\x7F", "https://e.com/%27%5C%28x%29%3C%22y%22%3E%0A%7F"},
          {"javascript:alert(1)", {}},
          {"file:///etc/passwd", {}},
          {"git+https://example.com/a.git", {}},
          {"https:example.com", {}},
          {"http", {}},
          {"", {}}}) {
        EXPECT_EQ(linkAddress(source), link) << source;
    }
}

}  // namespace
}  // namespace ScanKit

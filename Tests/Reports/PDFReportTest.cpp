#include "ScanKit/Reports/PDF/PDFReport.h"

#include "ScanKit/Reports/PDF/PDFCanvas.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using Texts = std::vector<PDFReport::Text>;
constexpr PDFReport::Sheet sheet;

PDFReport laidOut(const ScanResult& result, const ReportOptions& options = sampleOptions()) {
    PDFCanvas canvas;
    return PDFReport::laidOut(result, options, canvas);
}

Texts textsOf(const PDFReport::Page& page, bool inFooter = false) {
    Texts texts;
    for (const PDFReport::Op& op : page) {
        const auto* text = std::get_if<PDFReport::Text>(&op);
        if (text != nullptr && (text->rectangle.y >= sheet.footerRule()) == inFooter) {
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

bool isRepeatedName(const PDFReport::Text& text) {
    return text.string.text.ends_with(", continued");
}

/// Writes down a report, one line for each operation, and leaves out what depends on the fonts of the machine:
/// heights, the number of pages, and what their ends repeat. Of what stands below each other it has the gap.
class Description {
public:
    std::string of(const PDFReport& report) {
        const auto& [title, author, creator, created] = report.properties;
        lines_ << title << ", " << author << ", " << creator << ", " << Dates::iso8601(created) << "\n";
        for (const PDFReport::Page& page : report.pages) {
            repeatsTitles_ = &page != &report.pages.front();
            isLast_ = &page == &report.pages.back();
            for (const PDFReport::Op& op : page) {
                std::visit(*this, op);
            }
        }
        return lines_.str();
    }

    void operator()(const PDFReport::Text& text) {
        const auto& [string, font, colour, letterSpacing, link] = text.string;
        repeatsTitles_ = repeatsTitles_ && (isColumnTitle(text) || isRepeatedName(text));
        std::ostringstream what;
        what << (text.right ? "right " : "") << font.size << (font.bold ? " bold" : "")
             << (letterSpacing > 0 ? " spaced " : " ") << (string.starts_with("Page ") ? "Page" : string)
             << (link ? " -> " + *link : "");
        const double gap = text.rectangle.y - above_.y - above_.height;
        if (text.rectangle.x == above_.x && gap >= 0 && gap < 50) {
            what << " [" << std::round(gap * 10) / 10 << " below]";
        }
        above_ = text.rectangle;
        add(text.rectangle, colour, what.str());
    }
    void operator()(const PDFReport::Fill& fill) { add(fill.rectangle, fill.colour, "filled"); }
    void operator()(const PDFReport::Stroke& box) {
        add(box.rectangle, box.colour, "box " + std::to_string(std::lround(box.rectangle.height)) + " high");
    }
    void operator()(const PDFReport::Line& line) {
        add({line.from.x, line.from.y, line.to.x - line.from.x, 0}, line.colour, "line");
    }

private:
    void add(const PDFReport::Rectangle& place, const PDFReport::Colour& colour, const std::string& what) {
        const auto percent = [](double part) { return std::lround(part * 100); };
        if (place.y >= sheet.footerRule() ? isLast_ : !repeatsTitles_) {
            lines_ << place.x << "+" << place.width << " " << percent(colour.red) << "/"
                   << percent(colour.green) << "/" << percent(colour.blue) << " " << what << "\n";
        }
    }
    std::ostringstream lines_;
    PDFReport::Rectangle above_;
    bool repeatsTitles_ = false, isLast_ = false;
};

TEST(PDFReport, SaysEverythingInItsOrderPlaceAndLook) {
    const EnvironmentVariable zone{"TZ", "UTC"};
    const ReportOptions withDev{
        .projectName = "a\nb", .preparedBy = "\xFF", .includeDev = true, .appName = "App"};
    ScanResult unremarkable = resultOf({});
    for (const std::string license :
         {"mit", "Unknown", "MIT", "", "ÄPL", "Zlib"}) {  // shown by count, then by code
        unremarkable.dependencies.push_back({.license = license, .flags = {Flag::noLicenseFile}});
    }
    unremarkable.dependencies[1].category = LicenseCategory::proprietary;
    unremarkable.dependencies[3].license.reset();
    expectGolden("sample-report.txt", Description().of(laidOut(sampleResult())));
    expectGolden("sample-report-with-dev.txt", Description().of(laidOut(sampleResult(), withDev)));
    expectGolden("empty-report.txt", Description().of(laidOut(resultOf({}), {})));
    expectGolden("unremarkable-report.txt", Description().of(laidOut(unremarkable, {.preparedFor = "X\tY"})));
}

/// Rows of one to many lines, some flagged, so that tables end and begin at every height of a page.
ScanResult longResult(std::size_t count) {
    ScanResult result = resultOf({});
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        result.dependencies.push_back({.name = "package-" + number + std::string(i % 7 * 20, 'x'),
                                       .version = "v" + number,
                                       .isDev = i % 5 == 0,
                                       .license = "License-" + std::to_string(i % 40)});
        if (i % 3 == 0) {
            const std::string note = "A note that takes more than one line of its cell, " + number + ".";
            result.dependencies.back().flags = {Flag::mismatch, Flag::noLicenseFile};
            result.dependencies.back().notes.assign(i % 11, note);
        }
    }
    return result;
}

/// What is drawn keeps the margins, its distance from what else is drawn, and one line with the rest of its row.
void expectApartInsideTheMargins(const Texts& texts, const PDFReport::Page& page, PDFCanvas& canvas) {
    std::vector<double> rules;
    for (const PDFReport::Op& op : page) {
        if (const auto* line = std::get_if<PDFReport::Line>(&op)) {
            rules.push_back(line->from.y);
        } else if (const auto* box = std::get_if<PDFReport::Stroke>(&op); box && box->rectangle.height > 10) {
            rules.insert(rules.end(), {box->rectangle.y, box->rectangle.y + box->rectangle.height});
        }
    }
    double baselineBefore = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(texts[i].string.text);
        const PDFReport::Rectangle& a = texts[i].rectangle;
        EXPECT_TRUE(a.x >= 50 && a.x + a.width <= 562.001 && a.y >= 50 &&
                    a.y + a.height <= sheet.contentEnd() + 0.02)
            << "outside the margins";
        double height = 0;
        const std::vector<PDFCanvas::TextLine> lines = canvas.lines(texts[i].string, a.width);
        for (const PDFCanvas::TextLine& line : lines) {
            height += line.height;
        }
        EXPECT_NEAR(height, a.height, 0.02) << "runs out of its place";
        for (std::size_t j = 0; j < i; ++j) {
            const PDFReport::Rectangle& b = texts[j].rectangle;
            EXPECT_TRUE(a.x + a.width <= b.x - 9.99 || b.x + b.width <= a.x - 9.99 ||
                        a.y + a.height <= b.y + 0.01 || b.y + b.height <= a.y + 0.01)
                << "comes too near to " << texts[j].string.text;
        }
        for (const double rule : rules) {
            EXPECT_TRUE(rule <= a.y - 3.99 || rule >= a.y + a.height + 3.99) << "comes too near to a line";
        }
        const PDFReport::Text &before = texts[i == 0 ? 0 : i - 1], &first = texts[i < 2 ? 0 : i - 2];
        const bool isAfterOneLine = i < 2 || first.rectangle.x != before.rectangle.x;
        const double above = before.rectangle.y + before.rectangle.height,
                     baseline = a.y + lines.front().baseline;
        EXPECT_TRUE(!isHeading(texts[i]) || i == 0 || a.y >= above + 18) << "is too near to what is above";
        if (a.x > before.rectangle.x && isAfterOneLine &&
            texts[i].string.font.size == before.string.font.size && a.y < above) {
            EXPECT_NEAR(baseline, baselineBefore, 0.01) << "stands on another line than the cell before";
        }
        baselineBefore = baseline;
    }
}

/// Each heading with the row below it, rows whole below their titles, and the outline and page numbers right.
void expectWellParted(const PDFReport& report, bool hasOtherRows) {
    std::vector<PDFReport::Bookmark> headings;
    for (std::size_t i = 0; i < report.pages.size(); ++i) {
        SCOPED_TRACE("page " + std::to_string(i + 1));
        EXPECT_EQ(textsOf(report.pages[i], true).back().string.text,
                  "Page " + std::to_string(i + 1) + " of " + std::to_string(report.pages.size()));
        const Texts texts = textsOf(report.pages[i]);
        for (auto text = texts.begin(); text != texts.end(); ++text) {
            const auto row = std::find_if_not(text + 1, texts.end(), isColumnTitle);
            if (isHeading(*text)) {
                headings.push_back({text->string.text, i, text->rectangle.y});
                EXPECT_TRUE(row != texts.end() && !isHeading(*row)) << "alone: " << text->string.text;
            }
        }
        EXPECT_FALSE(isColumnTitle(texts.back())) << "ends with titles";
        if (i > 0 && !hasOtherRows && !isHeading(texts.front())) {
            EXPECT_TRUE(isRepeatedName(texts.front()) && isColumnTitle(texts[1])) << "goes on untitled";
            const std::string first =
                std::find_if_not(texts.begin() + 1, texts.end(), isColumnTitle)->string.text;
            EXPECT_TRUE(first.starts_with("package-") || first.starts_with("License-") || first == "Medium")
                << "begins inside a row: " << first;
        }
    }
    EXPECT_EQ(report.outline, headings);
    EXPECT_EQ(headings.size(), 4U);
}

/// Of each table, how many rows stand on each of its pages. The last entry is "About this scan", without rows.
std::vector<std::vector<std::size_t>> rowsOfTables(const PDFReport& report) {
    std::vector<std::vector<std::size_t>> tables;
    for (const PDFReport::Page& page : report.pages) {
        for (const PDFReport::Text& text : textsOf(page)) {
            const std::string& words = text.string.text;
            if (isHeading(text)) {
                tables.push_back({0});
            } else if (isRepeatedName(text)) {
                tables.back().push_back(0);
            } else if (!tables.empty() && (words == "Medium" || (text.rectangle.x == PDFReport::margin &&
                                                                 (words.starts_with("package-") ||
                                                                  words.starts_with("License-"))))) {
                ++tables.back().back();
            }
        }
    }
    return tables;
}

TEST(PDFReport, LeavesNoRowAndNoClosingWordsAlone) {
    PDFCanvas canvas;
    for (const Paper paper : {Paper::letter, Paper::a4}) {
        for (std::size_t count = 2; count < 90; ++count) {
            SCOPED_TRACE(std::to_string(count) + " packages");
            ScanResult result = longResult(count);
            // Closing words of all lengths up to those that may be parted.
            const std::string path =
                "packages/of-a-name-that-needs-two-lines/" + std::string(60, 'x') + "/package-lock.json";
            result.sources.assign(count * 7 % 40, {Ecosystem::npm, path, "npm lockfile"});
            const PDFReport report = PDFReport::laidOut(result, {.includeDev = true, .paper = paper}, canvas);
            std::vector<std::vector<std::size_t>> tables = rowsOfTables(report);
            tables.pop_back();
            for (const std::vector<std::size_t>& table : tables) {
                for (const std::size_t rows : table) {
                    EXPECT_TRUE(table.size() == 1 || rows > 1) << "a row alone on a page";
                }
            }
            const Texts last = textsOf(report.pages.back());
            EXPECT_FALSE(isHeading(last.front()) && last.front().string.text == "About this scan")
                << "the last page has closing words alone";
            const auto words = std::ranges::find_if(last, [](const PDFReport::Text& text) {
                return text.string.text.starts_with("This report lists");
            });
            EXPECT_GT(words - last.begin(), 3) << "the last page has hardly more than the closing words";
            std::ptrdiff_t paths = 0;
            for (const PDFReport::Page& page : report.pages) {
                paths += std::ranges::count_if(page, [&](const PDFReport::Op& op) {
                    const auto* text = std::get_if<PDFReport::Text>(&op);
                    return text != nullptr && text->string.text == path;
                });
            }
            EXPECT_EQ(paths, std::ssize(result.sources)) << "a page ends between the two lines of a path";
        }
    }
}

TEST(PDFReport, IsSetWellAtEveryLength) {
    // Every length of the license table puts what follows at another height.
    std::vector<ScanResult> results{sampleResult(), longResult(400)};
    for (std::size_t count = 2; count < 40; count += count % 5 == 0 ? 2 : 1) {
        results.push_back(longResult(count));
    }
    PDFCanvas canvas;
    for (const ScanResult& result : results) {
        SCOPED_TRACE(std::to_string(result.dependencies.size()) + " packages");
        const PDFReport report = PDFReport::laidOut(result, {.includeDev = true}, canvas);
        expectWellParted(report, &result == &results.front());
        std::multiset<std::string> shown;
        for (const PDFReport::Page& page : report.pages) {
            const Texts texts = textsOf(page);
            expectApartInsideTheMargins(texts, page, canvas);
            std::ranges::transform(texts, std::inserter(shown, shown.end()),
                                   [](const PDFReport::Text& text) { return text.string.text; });
        }
        for (const Dependency& dependency : result.dependencies) {
            EXPECT_EQ(shown.count(dependency.name), dependency.needsReview() ? 2U : 1U) << dependency.name;
        }
    }
}

TEST(PDFReport, GoesOnOnTheNextPagesWithARowHigherThanOne) {
    PDFCanvas canvas;
    const PDFReport report = PDFReport::laidOut(hostileResult(), sampleOptions(), canvas);
    expectWellParted(report, true);
    std::ptrdiff_t letters = 0, squares = 0;
    for (const PDFReport::Page& page : report.pages) {
        const Texts texts = textsOf(page);
        expectApartInsideTheMargins(texts, page, canvas);
        for (const PDFReport::Text& text : texts) {
            letters += std::ranges::count(text.string.text, 'W');
        }
        squares += std::ranges::count_if(
            page, [](const auto& op) { return std::holds_alternative<PDFReport::Fill>(op); });
        EXPECT_GT(letters, 0) << "the first page has room for a beginning";
    }
    EXPECT_EQ(letters, 2 * 10'000) << "once in each of two tables";
    EXPECT_EQ(squares, 2) << "the severity is drawn once";
}

TEST(PDFReport, FillsThePageBeforeATextGoesOnOnTheNext) {
    ScanResult result = resultOf({{.name = "one"}});
    // The shorter one is no half of a page, and would leave nearly as much blank if it were kept whole.
    for (const std::size_t files : {18U, 2'000U}) {
        result.sources.assign(files, {Ecosystem::npm, "some/folder/package-lock.json", "npm lockfile"});
        const PDFReport report = laidOut(result);
        const Texts texts = textsOf(report.pages.front());
        EXPECT_GT(texts.back().rectangle.y + texts.back().rectangle.height, sheet.contentEnd() - 20);
        EXPECT_GT(report.pages.size(), 1U);
        for (std::size_t i = 1; i < report.pages.size(); ++i) {
            const PDFReport::Text first = textsOf(report.pages[i]).front();
            EXPECT_TRUE(first.string.text == "About this scan, continued" && !first.element)
                << first.string.text;
        }
    }
}

TEST(PDFReport, ShortensALongNameInTheFooterAlone) {
    PDFCanvas canvas;
    const std::string rest = " · Third-party license report · January 5, 2026 · Not legal advice";
    for (const char letter : std::string("WMm0eriI")) {
        for (const std::size_t letters :
             {10U, 40U, 199U, letter == 'W' ? 410U : 201U}) {  // 410: to a page's foot
            const std::string name = "Ü" + std::string(letters, letter);
            const PDFReport report = PDFReport::laidOut(resultOf({}), {.projectName = name}, canvas);
            const PDFReport::Text footer = textsOf(report.pages.front(), true).front();
            PDFReport::AttributedString fitting = footer.string;
            fitting.text = name + rest;
            for (std::size_t left = 200; canvas.width(fitting) > footer.rectangle.width; --left) {
                fitting.text = "Ü" + std::string(left, letter) + "…" + rest;
            }
            EXPECT_EQ(footer.string.text, fitting.text) << letters << " letters";
            for (const PDFReport::Page& page : report.pages) {
                expectApartInsideTheMargins(textsOf(page), page, canvas);
            }
        }
    }
}

/// All texts of the body, a line each.
std::string wordsOf(const PDFReport& report) {
    std::string words = "\n";
    for (const PDFReport::Page& page : report.pages) {
        for (const PDFReport::Text& text : textsOf(page)) {
            words += text.string.text + "\n";
        }
    }
    return words;
}

std::size_t countOf(const std::string& words, const std::string& wanted) {
    std::size_t count = 0;
    for (std::size_t at = words.find(wanted); at != std::string::npos; at = words.find(wanted, at + 1)) {
        ++count;
    }
    return count;
}

TEST(PDFReport, SaysEachNoteOnceAndWhoseItIs) {
    const std::vector<Flag> copyleft{Flag::strongCopyleft};
    const std::string own = "For one alone.", shared = "For two.", choice = "A choice.",
                      twice = "Said twice by one.";
    const PDFReport report = laidOut(
        resultOf(
            {{.name = "plain", .license = "MIT", .notes = {choice}},
             {.name = "first", .license = "MIT", .flags = {Flag::noLicenseFile}, .notes = {"For many."}},
             {.name = "second", .isDev = true, .license = "GPL", .flags = copyleft, .notes = {own, shared}},
             {.name = "third", .license = "GPL", .flags = copyleft, .notes = {"For many.", shared}},
             {.name = "fourth", .license = "MIT", .notes = {twice, twice}}}),
        {.includeDev = true});
    const std::string words = wordsOf(report);
    for (const auto& [wanted, count] : {std::pair<std::string, std::size_t>{own, 1},
                                        {shared, 1},
                                        {choice, 1},
                                        {"For many.", 1},
                                        {twice, 2},
                                        {"\nsecond\nDev only\n", 1},
                                        {"\nCopyleft (GPL)\n1\n" + own, 1},
                                        {"\nCopyleft (GPL)\n1, 2\n", 1},
                                        {"\n1\n" + shared + "\n2\n2\nFor many.\n2\n", 1},
                                        {"\nDev only\nNotes\nplain\n", 1}}) {
        EXPECT_EQ(countOf(words, wanted), count) << wanted << words;
    }
}

TEST(PDFReport, SaysOnceWhatAScanSaysOfManyFolders) {
    using Kind = ScanWarning::Kind;
    const std::string missing = " has a lockfile but nothing of what it names is installed here.",
                      damaged = " has a damaged lockfile; nothing of what it names is installed here.";
    ScanResult result = resultOf({});
    for (const auto& [kind, sentence] : {std::pair{Kind::npmModulesMissing, "web/a10" + missing},
                                         {Kind::npmModulesMissing, "b1" + damaged},
                                         {Kind::npmModulesMissing, "web/a20" + missing},
                                         {Kind::lockfileIsBinary, "other" + missing},
                                         {Kind::npmModulesMissing, "an app" + missing},
                                         {Kind::npmModulesMissing, "b2" + damaged}}) {
        result.warnings.push_back({kind, sentence});
    }
    EXPECT_EQ(countOf(wordsOf(laidOut(result)), "read\n…" + missing +
                                                    "\nThis holds for 3: web/a10, web/a20, an app\nb1" +
                                                    damaged + "\nother" + missing + "\nb2" + damaged + "\n"),
              1U)
        << wordsOf(laidOut(result));
}

TEST(PDFReport, KeepsTheNameOfTheAccountToItself) {
    const EnvironmentVariable home{"HOME", "/home/someone"};
    ScanResult result = resultOf({});
    result.rootPath = "/home/someone/projects/app";
    EXPECT_EQ(countOf(wordsOf(laidOut(result)), "Found in\n~/projects/app\n"), 1U)
        << wordsOf(laidOut(result));
}

TEST(PDFReport, NamesEachTypeOfThePackagesWithoutLicense) {
    const PDFReport report =
        laidOut(resultOf({{.name = "own terms", .category = LicenseCategory::proprietary},
                          {.name = "nothing at all"},
                          {.name = "free", .license = "MIT"}}));
    EXPECT_EQ(countOf(wordsOf(report), "\nUnknown\nNot open source, Unknown\n2\nMIT\n"), 1U)
        << wordsOf(report);
}

/// Where the letters of the text stand on their page.
double firstBaseline(const PDFReport::Text& text, PDFCanvas& canvas) {
    return text.rectangle.y + canvas.lines(text.string, text.rectangle.width).front().baseline;
}

TEST(PDFReport, SetsWhatDoesNotFitIntoOneLineWell) {
    PDFCanvas canvas;
    const std::string longName = "The Company of Names That Need Most of a Line";
    for (const auto& [preparedFor, preparedBy, lines] :
         {std::tuple{"A", "B", "\nPrepared for A  ·  Prepared by B  ·  January 5, 2026\n"},
          {longName.c_str(), longName.c_str(), "\nJanuary 5, 2026\n"}}) {
        const ReportOptions options{
            .projectName = "名前", .preparedFor = preparedFor, .preparedBy = preparedBy};
        const PDFReport report = PDFReport::laidOut(resultOf({}), options, canvas);
        EXPECT_EQ(countOf(wordsOf(report), lines), 1U) << wordsOf(report);
        const Texts footer = textsOf(report.pages.front(), true);
        EXPECT_NEAR(firstBaseline(footer.front(), canvas), firstBaseline(footer.back(), canvas), 0.01);
    }
}

TEST(PDFReport, WritesEnglishFromLeftToRightBesideForeignFolders) {
    ScanResult result = resultOf({});
    result.warnings = {{.sentence = "שלום couldn't be read."}, {.sentence = "שלום/עם has no folder."}};
    result.sources = {{Ecosystem::npm, "עם/package-lock.json", "npm lockfile"}};
    result.rootPath = "/שלום/עם";
    std::size_t found = 0;
    for (const PDFReport::Text& text : textsOf(laidOut(result).pages.front())) {
        found += text.string.text.find("עם") != std::string::npos ? 1 : 0;
        EXPECT_FALSE(Text::isRightToLeft(text.string.text)) << text.string.text;
    }
    EXPECT_EQ(found, 3U);
}

TEST(PDFReport, CountsOneAsOneAndSaysWhatIsLeftOut) {
    const Dependency one{.name = "one", .isDev = true, .license = "GPL", .flags = {Flag::strongCopyleft}};
    Dependency other = one;
    other.name = "other";
    const ReportOptions all{.includeDev = true};
    for (const auto& [dependencies, options, wanted] :
         {std::tuple{std::vector{one}, all, "\n1\ndependency\n1\nneeds review\n"},
          {std::vector{one}, all, "By ecosystem: 1 Swift package  ("},
          {std::vector{one, other}, all, "\n2\ndependencies\n2\nneed review\n"},
          {std::vector{one, other}, all, "By ecosystem: 2 Swift packages  ("},
          {std::vector{one}, ReportOptions{}, "\nNo dependencies found. 1 dev-only package is left out.\n"},
          {std::vector{one, other}, ReportOptions{}, "found. 2 dev-only packages are left out.\n"},
          {std::vector<Dependency>{}, ReportOptions{}, "\nNo dependencies found.\n"}}) {
        EXPECT_EQ(countOf(wordsOf(laidOut(resultOf(dependencies), options)), wanted), 1U) << wanted;
    }
}

}  // namespace
}  // namespace ScanKit

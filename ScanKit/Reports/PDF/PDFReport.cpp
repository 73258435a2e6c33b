#include "ScanKit/Reports/PDF/PDFReport.h"

#include "ScanKit/Reports/PDF/PDFCanvas.h"
#include "ScanKit/Reports/PDF/PDFLayout.h"
#include "ScanKit/Reports/PDF/PDFMissingScripts.h"
#include "ScanKit/Reports/PDF/PDFSections.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace ScanKit {
namespace {

constexpr PDFStyle kindStyle{.font = {.size = 9}, .colour = PDFColours::quiet, .letterSpacing = 1.2};
constexpr PDFStyle titleStyle{.font = {.size = 24, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle metaStyle{.font = {.size = 10}, .colour = PDFColours::quiet};
constexpr PDFStyle figureStyle{.font = {.size = 20, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle captionStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};
constexpr PDFStyle bodyStyle{.font = {.size = 9}, .colour = PDFColours::ink};
constexpr PDFStyle furnitureStyle{.font = {.size = 7.5}, .colour = PDFColours::quiet};

/// Between things that stand on one line.
constexpr std::string_view dot = "  ·  ";

PDFPages::Sheet sheetOf(Paper paper) {
    switch (paper) {
        case Paper::letter:
            return {.width = 612, .height = 792};
        case Paper::a4:
            return {.width = 595.28, .height = 841.89};
    }
    return {};
}

void addTitle(PDFLayout& layout, const PDFContents& contents) {
    const ReportOptions& options = contents.options;
    layout.text(kindStyle("THIRD-PARTY LICENSE REPORT"));
    layout.skip(4);
    layout.text(titleStyle(options.projectName), PDFPages::Role::heading1);
    layout.skip(4);
    std::vector<std::string> facts;
    if (!options.preparedFor.empty()) {
        facts.push_back(fmt::format("Prepared for {}", keepingDirection(options.preparedFor)));
    }
    if (!options.preparedBy.empty()) {
        facts.push_back(fmt::format("Prepared by {}", keepingDirection(options.preparedBy)));
    }
    facts.push_back(contents.date);
    // On one line as far as they fit on one: else a line would end in the middle of a date.
    const PDFPages::AttributedString all = metaStyle(Text::joined(facts, dot));
    if (layout.measure().width(all) <= layout.sheet().contentWidth()) {
        facts = {all.text};
    }
    for (const std::string& fact : facts) {
        layout.text(metaStyle(fact));
    }
    layout.skip(14);
}

/// A box with a number and what it counts.
void addFigure(PDFLayout& layout, const PDFPages::Rectangle& box, std::size_t number,
               std::string_view caption) {
    constexpr double inset = 12;
    layout.page().emplace_back(PDFPages::Stroke{box, PDFColours::rule});
    // One paragraph for a listener: "6 dependencies".
    const std::size_t element = layout.addElement(PDFPages::Role::paragraph);
    PDFTextBlock text({{.string = figureStyle(std::to_string(number)), .element = element},
                       {.string = captionStyle(caption), .gapAbove = 1, .element = element}},
                      box.width - 2 * inset, layout.measure());
    text.place(layout.page(), {box.x + inset, box.y + (box.height - text.height()) / 2}, box.height);
}

void addFigures(PDFLayout& layout, const ReportSummary& summary) {
    constexpr double height = 58, gap = 12;
    const std::array<std::pair<std::size_t, std::string_view>, 4> figures{{
        {summary.total, summary.total == 1 ? "dependency" : "dependencies"},
        {summary.needsReview, summary.needsReview == 1 ? "needs review" : "need review"},
        {summary.copyleft, "copyleft"},
        {summary.unknownOrMissing, "unknown or missing"},
    }};
    const double width = (layout.sheet().contentWidth() - 3 * gap) / 4;
    layout.skip(16);
    layout.makeRoom(height);
    double x = PDFPages::margin;
    for (const auto& [number, caption] : figures) {
        addFigure(layout, {x, layout.y(), width, height}, number, caption);
        x += width + gap;
    }
    layout.skip(height + 10);
}

/// An empty list must not look as if there were nothing to list.
std::string nothingFound(const PDFContents& contents) {
    const std::size_t leftOut = contents.result.dependencies.size();
    const std::string found = "No dependencies found.";
    return leftOut == 0   ? found
           : leftOut == 1 ? found + " 1 dev-only package is left out."
                          : fmt::format("{} {} dev-only packages are left out.", found, leftOut);
}

void addEcosystems(PDFLayout& layout, const PDFContents& contents) {
    std::string entries;
    for (const auto& [ecosystem, count] : contents.summary.byEcosystem) {
        const bool isOneOfMany = count == 1 && ecosystem == Ecosystem::swiftpm;
        appendItem(entries, dot,
                   fmt::format("{} {}", count, isOneOfMany ? "Swift package" : label(ecosystem)));
    }
    layout.text(bodyStyle(fmt::format(
        "By ecosystem: {}  ({})", entries,
        contents.options.includeDev ? "including dev-only packages" : "dev-only packages left out")));
    layout.skip(sectionGap);
}

/// The height that a last section needs on the page on which it begins.
double heightOfBeginning(const std::vector<PDFParagraph>& section, const PDFLayout& layout) {
    const double height = PDFTextBlock(section, layout.sheet().contentWidth(), layout.measure()).height();
    return sectionGap + PDFLayout::headingHeight + PDFLayout::heightOfBeginning(height);
}

void addBody(PDFLayout& layout, const PDFContents& contents) {
    std::vector<PDFParagraph> about = aboutThisScan(contents);
    addTitle(layout, contents);
    addFigures(layout, contents.summary);
    if (contents.dependencies.empty()) {
        layout.text(bodyStyle(nothingFound(contents)));
        layout.skip(sectionGap);
    } else {
        addEcosystems(layout, contents);
        addLicenses(layout, contents);
        addAttention(layout, contents);
        addSharedNotes(layout, contents);
        addDependencies(layout, contents, heightOfBeginning(about, layout));
    }
    const std::string title = "About this scan";
    layout.heading(title);
    layout.text(std::move(about), title);
}

/// The footer's text, the project's name shortened until all of it fits into the width.
PDFPages::AttributedString footerText(const PDFContents& contents, double width, PDFTextMeasure& measure) {
    const std::string name = keepingDirection(displayText(contents.options.projectName));
    const std::string rest =
        fmt::format(" · Third-party license report · {} · Not legal advice", contents.date);
    // No line of the footer has room for more letters than these.
    constexpr std::size_t mostCharacters = 200;
    const std::string_view beginning = Text::prefix(name, mostCharacters);
    PDFPages::AttributedString text = furnitureStyle(std::string(beginning) + rest);
    // Most names fit, which one measurement tells.
    if (beginning.size() == name.size() && measure.width(text) <= width) {
        return text;
    }
    std::size_t fitting = 0;
    for (std::size_t tooMany = mostCharacters + 1; tooMany - fitting > 1;) {
        const std::size_t count = (fitting + tooMany) / 2;
        text = furnitureStyle(fmt::format("{}…{}", Text::prefix(name, count), rest));
        (measure.width(text) <= width ? fitting : tooMany) = count;
    }
    return furnitureStyle(fmt::format("{}…{}", Text::prefix(name, fitting), rest));
}

/// What every page has below its rule. It needs the number of pages, so it comes last.
void addFurniture(PDFReport& report, const PDFContents& contents, PDFTextMeasure& measure) {
    std::vector<PDFPages::Page>& pages = report.pages;
    const PDFPages::Sheet& sheet = report.sheet;
    constexpr double left = PDFPages::margin, pageNumberWidth = 90;
    const double right = left + sheet.contentWidth(), top = sheet.footerRule() + 8;
    const double textWidth = sheet.contentWidth() - pageNumberWidth;
    const PDFPages::Line rule{
        {left, sheet.footerRule()}, {right, sheet.footerRule()}, PDFColours::strongRule};
    const PDFPages::AttributedString text = footerText(contents, textWidth, measure);
    const PDFPages::AttributedString product = furnitureStyle(contents.options.appName);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const auto number = furnitureStyle(fmt::format("Page {} of {}", i + 1, pages.size()));
        PDFTextBlock words({{.string = text}, {.string = product, .gapAbove = 2}}, textWidth, measure);
        PDFTextBlock pageNumber({{.string = number, .right = true}}, pageNumberWidth, measure);
        // Both stand on one line, though the name may be in a font whose lines are higher.
        const double shift = words.baseline() - pageNumber.baseline();
        pages[i].emplace_back(rule);
        words.place(pages[i], {left, top}, sheet.height - top);
        pageNumber.place(pages[i], {right - pageNumberWidth, top + shift}, sheet.height - top - shift);
    }
}

/// Measures nothing, and keeps each character that plain text does not have.
class CharacterCollector : public PDFTextMeasure {
public:
    std::vector<TextLine> lines(const PDFPages::AttributedString& string, double /*width*/) override {
        for (std::size_t end = 0; end < string.text.size();) {
            const std::size_t begin = end;
            if (Text::nextScalar(string.text, end) > '~') {
                characters_.insert(string.text.substr(begin, end - begin));
            }
        }
        return {{.end = string.text.size(), .height = 1}};
    }
    double width(const PDFPages::AttributedString& string) override {
        return lines(string, 0).front().baseline;
    }
    /// Apart from each other, so that none combines with another.
    std::string characters() const {
        std::string all;
        for (const std::string& character : characters_) {
            appendItem(all, " ", character);
        }
        return all;
    }

private:
    std::set<std::string> characters_;
};

}  // namespace

PDFReport PDFReport::laidOut(const ScanResult& result, const ReportOptions& options,
                             PDFTextMeasure& measure) {
    const std::vector<const Dependency*> dependencies = reportedDependencies(result, options);
    const PDFContents contents{.result = result,
                               .options = options,
                               .dependencies = dependencies,
                               .summary = ReportSummary(dependencies),
                               .notes = PDFSharedNotes(dependencies),
                               .date = Dates::longDate(result.scannedAt)};
    PDFLayout layout(measure, sheetOf(options.paper));
    addBody(layout, contents);
    PDFReport report;
    report.sheet = layout.sheet();
    report.pages = layout.takePages();
    report.outline = layout.takeOutline();
    report.structure = layout.takeStructure();
    report.properties = {.title = displayText(options.projectName + " License Report"),
                         .author = displayText(options.preparedBy),
                         .creator = displayText(options.appName),
                         .created = result.scannedAt};
    addFurniture(report, contents, measure);
    return report;
}

std::string PDFReport::document(const ScanResult& result, const ReportOptions& options) {
    PDFCanvas canvas;
    return canvas.draw(laidOut(result, options, canvas));
}

std::optional<std::string> PDFReport::warning(const ScanResult& result, const ReportOptions& options) {
    CharacterCollector collector;
    laidOut(result, options, collector);
    PDFCanvas canvas;
    return missingScriptsSentence(canvas.undrawable(collector.characters()));
}

}  // namespace ScanKit

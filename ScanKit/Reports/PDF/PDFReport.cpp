#include "ScanKit/Reports/PDF/PDFReport.h"

#include "ScanKit/Reports/PDF/PDFCanvas.h"
#include "ScanKit/Reports/PDF/PDFLayout.h"
#include "ScanKit/Reports/PDF/PDFMissingScripts.h"
#include "ScanKit/Reports/PDF/PDFTable.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace ScanKit {
namespace {

using Column = PDFPages::Column;
using Cell = PDFTable::Cell;

constexpr PDFStyle kindStyle{.font = {.size = 9}, .colour = PDFColours::quiet, .letterSpacing = 1.2};
constexpr PDFStyle titleStyle{.font = {.size = 24, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle metaStyle{.font = {.size = 10}, .colour = PDFColours::quiet};
constexpr PDFStyle figureStyle{.font = {.size = 20, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle captionStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};
constexpr PDFStyle bodyStyle{.font = {.size = 9}, .colour = PDFColours::ink};
constexpr PDFStyle labelStyle{.font = {.size = 9, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle cellStyle{.font = {.size = 8.5}, .colour = PDFColours::ink};
constexpr PDFStyle boldCellStyle{.font = {.size = 8.5, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle quietCellStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};
constexpr PDFStyle disclaimerStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};
constexpr PDFStyle furnitureStyle{.font = {.size = 7.5}, .colour = PDFColours::quiet};

constexpr double sectionGap = 18;
/// Between things that stand on one line.
constexpr std::string_view dot = "  ·  ";

void append(std::string& list, std::string_view separator, std::string_view item) {
    list += list.empty() ? "" : separator;
    list += item;
}

/// What all sections of one report are made from.
struct Contents {
    const ScanResult& result;
    const ReportOptions& options;
    std::vector<const Dependency*> dependencies;
    ReportSummary summary;
    std::string date;
};

void addTitle(PDFLayout& layout, const Contents& contents) {
    const ReportOptions& options = contents.options;
    layout.text(kindStyle("THIRD-PARTY LICENSE REPORT"));
    layout.skip(4);
    layout.text(titleStyle(options.projectName), PDFPages::Role::heading1);
    layout.skip(4);
    std::string meta;
    if (!options.preparedFor.empty()) {
        append(meta, dot, fmt::format("Prepared for {}", options.preparedFor));
    }
    if (!options.preparedBy.empty()) {
        append(meta, dot, fmt::format("Prepared by {}", options.preparedBy));
    }
    append(meta, dot, contents.date);
    layout.text(metaStyle(meta));
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
        {summary.total, "dependencies"},
        {summary.needsReview, "need review"},
        {summary.copyleft, "copyleft"},
        {summary.unknownOrMissing, "unknown or missing"},
    }};
    constexpr double width = (PDFPages::contentWidth - 3 * gap) / 4;
    layout.skip(16);
    layout.makeRoom(height);
    double x = PDFPages::margin;
    for (const auto& [number, caption] : figures) {
        addFigure(layout, {x, layout.y(), width, height}, number, caption);
        x += width + gap;
    }
    layout.skip(height + 10);
}

void addEcosystems(PDFLayout& layout, const Contents& contents) {
    std::string entries;
    for (const auto& [ecosystem, count] : contents.summary.byEcosystem) {
        append(entries, dot, fmt::format("{} {}", count, label(ecosystem)));
    }
    layout.text(bodyStyle(fmt::format(
        "By ecosystem: {}  ({})", entries,
        contents.options.includeDev ? "including dev-only packages" : "dev-only packages left out")));
    layout.skip(sectionGap);
}

Cell cellOf(const PDFStyle& style, std::string_view text) {
    return {{.string = style(text)}};
}

/// The package's name, leading to where it comes from.
Cell nameCell(PDFStyle style, const Dependency& dependency) {
    const std::optional<std::string> link =
        dependency.source ? linkAddress(*dependency.source) : std::nullopt;
    if (link) {
        style.colour = PDFColours::link;
    }
    Cell cell = cellOf(style, dependency.name);
    cell.front().string.link = link;
    return cell;
}

void addLicenses(PDFLayout& layout, const ReportSummary& summary) {
    layout.heading("Licenses");
    PDFTable table(
        layout,
        {{.title = "License", .width = 0.52, .namesRow = true}, {"Type", 0.33}, {"Packages", 0.15, true}});
    for (const ReportSummary::License& license : summary.licenses) {
        table.addRow({cellOf(cellStyle, license.name), cellOf(quietCellStyle, label(license.category)),
                      cellOf(cellStyle, std::to_string(license.count))});
    }
    layout.skip(sectionGap);
}

Cell severityCell(const Dependency& dependency) {
    // Flags are in order: the most serious stands first.
    switch (const Flag::Severity worst = severity(dependency.flags.front())) {
        case Flag::Severity::high:
            return {{.string = boldCellStyle("High"), .meter = worst}};
        case Flag::Severity::medium:
            return {{.string = cellStyle("Medium"), .meter = worst}};
        case Flag::Severity::low:
            return {{.string = quietCellStyle("Low"), .meter = worst}};
    }
    return {};
}

Cell flagsAndNotesCell(const Dependency& dependency) {
    Cell cell;
    for (const Flag flag : dependency.flags) {
        cell.push_back({.string = boldCellStyle(label(flag)), .gapAbove = cell.empty() ? 0.0 : 1.0});
    }
    for (const std::string& note : dependency.notes) {
        cell.push_back({.string = quietCellStyle(note), .gapAbove = 2});
    }
    return cell;
}

void addAttention(PDFLayout& layout, const Contents& contents) {
    layout.heading("Needs attention");
    if (contents.summary.needsReview == 0) {
        layout.text(bodyStyle(
            "Nothing needs attention: every dependency has a recognized license that doesn't require sharing your code."));
    }
    PDFTable table(layout, {{"Severity", 0.125},
                            {.title = "Package", .width = 0.195, .namesRow = true},
                            {"Version", 0.12},
                            {"License", 0.16},
                            {"Flags and notes", 0.40}});
    for (const Dependency* dependency : contents.dependencies) {
        // In the order of the result, like every list: a reader looks packages up by name.
        if (dependency->needsReview()) {
            table.addRow({severityCell(*dependency), nameCell(boldCellStyle, *dependency),
                          cellOf(cellStyle, dependency->version),
                          cellOf(cellStyle, dependency->licenseDisplay()), flagsAndNotesCell(*dependency)});
        }
    }
    layout.skip(sectionGap);
}

void addDependencies(PDFLayout& layout, const Contents& contents) {
    layout.heading(fmt::format("All dependencies ({})", contents.dependencies.size()));
    const bool withDev = contents.options.includeDev;
    std::vector<Column> columns{{.title = "Package", .width = 0.30, .namesRow = true},
                                {"Version", 0.14},
                                {"Ecosystem", 0.15},
                                {"License", 0.24},
                                {"Found by", 0.17}};
    // The column costs room, so it is there only when there can be something in it.
    if (withDev) {
        columns = {{.title = "Package", .width = 0.27, .namesRow = true},
                   {"Version", 0.14},
                   {"Ecosystem", 0.14},
                   {"License", 0.20},
                   {"Found by", 0.15},
                   {"Dev only", 0.10}};
    }
    PDFTable table(layout, std::move(columns));
    for (const Dependency* dependency : contents.dependencies) {
        std::vector<Cell> cells{nameCell(cellStyle, *dependency), cellOf(cellStyle, dependency->version),
                                cellOf(quietCellStyle, label(dependency->ecosystem)),
                                cellOf(cellStyle, dependency->licenseDisplay()),
                                cellOf(quietCellStyle, shortLabel(dependency->basis))};
        if (withDev) {
            cells.push_back(cellOf(quietCellStyle, dependency->isDev ? "yes" : ""));
        }
        table.addRow(std::move(cells));
    }
    layout.skip(sectionGap);
}

/// The files read, one paragraph for each ecosystem.
std::vector<PDFParagraph> filesRead(const std::vector<ScanSource>& sources) {
    std::vector<PDFParagraph> files;
    for (const Ecosystem ecosystem : allEcosystems) {
        std::string paths;
        for (const ScanSource& source : sources) {
            if (source.ecosystem == ecosystem) {
                append(paths, ", ",
                       source.path + (source.entries ? " (" + inWords(*source.entries) + ")" : ""));
            }
        }
        if (!paths.empty()) {
            files.push_back(
                {.string = bodyStyle(fmt::format("{}: {}", shortLabel(ecosystem), paths)), .gapAbove = 2});
        }
    }
    return files;
}

/// The name of the user's account is nothing for a client.
std::string withHomeAsTilde(const std::filesystem::path& folder) {
    return displayPath(folder, folder / "below");
}

/// The warnings of the scan, under their heading; nothing without one.
std::vector<PDFParagraph> unreadParts(const std::vector<ScanWarning>& warnings) {
    std::vector<PDFParagraph> parts;
    for (const ScanWarning& warning : warnings) {
        if (parts.empty()) {
            parts.push_back(
                {.string = labelStyle("What this scan could not read"), .role = PDFPages::Role::heading3});
        }
        parts.push_back({.string = bodyStyle(warning.sentence), .gapAbove = 2});
    }
    return parts;
}

PDFParagraph disclaimer(const std::string& date) {
    return {
        .string = disclaimerStyle(fmt::format(
            "This report lists the open-source licenses found in the project's dependency files and the packages' own license files on {}. Packages sometimes misstate their licenses, and what a license requires depends on how you use and ship the package. Have anything marked below reviewed before you rely on it.",
            date)),
        .gapAbove = sectionGap};
}

/// The disclaimer is part of the section, so that it never stands on a page by itself.
void addAbout(PDFLayout& layout, const Contents& contents) {
    // First what the reader of the list must know: which packages may be missing in it.
    std::vector<PDFParagraph> paragraphs = unreadParts(contents.result.warnings);
    paragraphs.push_back({.string = labelStyle("Found in"),
                          .gapAbove = paragraphs.empty() ? 0.0 : 8.0,
                          .role = PDFPages::Role::heading3});
    paragraphs.push_back({.string = bodyStyle(withHomeAsTilde(contents.result.rootPath)), .gapAbove = 2});
    std::vector<PDFParagraph> files = filesRead(contents.result.sources);
    if (!files.empty()) {
        paragraphs.push_back(
            {.string = labelStyle("Files read"), .gapAbove = 8, .role = PDFPages::Role::heading3});
        std::ranges::move(files, std::back_inserter(paragraphs));
    }
    paragraphs.push_back(disclaimer(contents.date));
    layout.heading("About this scan");
    layout.text(std::move(paragraphs));
}

void addBody(PDFLayout& layout, const Contents& contents) {
    addTitle(layout, contents);
    addFigures(layout, contents.summary);
    if (contents.dependencies.empty()) {
        layout.text(bodyStyle("No dependencies found."));
        layout.skip(sectionGap);
    } else {
        addEcosystems(layout, contents);
        addLicenses(layout, contents.summary);
        addAttention(layout, contents);
        addDependencies(layout, contents);
    }
    addAbout(layout, contents);
}

/// The footer's text, the project's name shortened until all of it fits into the width.
PDFPages::AttributedString footerText(const Contents& contents, double width, PDFTextMeasure& measure) {
    const std::string name = displayText(contents.options.projectName);
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
void addFurniture(std::vector<PDFPages::Page>& pages, const Contents& contents, PDFTextMeasure& measure) {
    constexpr double left = PDFPages::margin, right = PDFPages::margin + PDFPages::contentWidth;
    constexpr double top = PDFPages::footerRule + 8, pageNumberWidth = 90;
    constexpr double textWidth = PDFPages::contentWidth - pageNumberWidth;
    const PDFPages::Line rule{
        {left, PDFPages::footerRule}, {right, PDFPages::footerRule}, PDFColours::strongRule};
    const PDFPages::AttributedString text = footerText(contents, textWidth, measure);
    const PDFPages::AttributedString product = furnitureStyle(contents.options.appName);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const auto number = furnitureStyle(fmt::format("Page {} of {}", i + 1, pages.size()));
        pages[i].emplace_back(rule);
        PDFTextBlock({{.string = text}, {.string = product, .gapAbove = 2}}, textWidth, measure)
            .place(pages[i], {left, top}, PDFPages::pageHeight - top);
        PDFTextBlock({{.string = number, .right = true}}, pageNumberWidth, measure)
            .place(pages[i], {right - pageNumberWidth, top}, PDFPages::pageHeight - top);
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
            append(all, " ", character);
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
    const Contents contents{.result = result,
                            .options = options,
                            .dependencies = dependencies,
                            .summary = ReportSummary(dependencies),
                            .date = Dates::longDate(result.scannedAt)};
    PDFLayout layout(measure);
    addBody(layout, contents);
    PDFReport report;
    report.pages = layout.takePages();
    report.outline = layout.takeOutline();
    report.structure = layout.takeStructure();
    report.properties = {.title = displayText(options.projectName + " License Report"),
                         .author = displayText(options.preparedBy),
                         .creator = displayText(options.appName),
                         .created = result.scannedAt};
    addFurniture(report.pages, contents, measure);
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

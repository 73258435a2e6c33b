#include "ScanKit/Reports/PDF/PDFLayout.h"
#include "ScanKit/Reports/PDF/PDFSections.h"
#include "ScanKit/Reports/PDF/PDFTable.h"

#include <algorithm>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace ScanKit {
namespace {

using Column = PDFPages::Column;
using Cell = PDFTable::Cell;

constexpr PDFStyle bodyStyle{.font = {.size = 9}, .colour = PDFColours::ink};
constexpr PDFStyle cellStyle{.font = {.size = 8.5}, .colour = PDFColours::ink};
constexpr PDFStyle boldCellStyle{.font = {.size = 8.5, .bold = true}, .colour = PDFColours::ink};
constexpr PDFStyle quietCellStyle{.font = {.size = 8.5}, .colour = PDFColours::quiet};
constexpr PDFStyle remarkStyle{.font = {.size = 8}, .colour = PDFColours::quiet};

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

/// The license; or what the package calls its own, which may be in any language.
Cell licenseCell(const Dependency& dependency) {
    const std::string shown = dependency.licenseDisplay();
    const std::size_t colon = dependency.license ? std::string::npos : shown.find(": ");
    return cellOf(cellStyle, colon == std::string::npos
                                 ? shown
                                 : shown.substr(0, colon + 2) + keepingDirection(shown.substr(colon + 2)));
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

/// One flag a line: a column as wide as the longest would break those of two words between them.
Cell flagsCell(const Dependency& dependency) {
    Cell cell;
    for (const Flag flag : dependency.flags) {
        const std::string_view separator = flag == dependency.flags.back() ? "" : ";";
        cell.push_back({.string = boldCellStyle(fmt::format("{}{}", label(flag), separator))});
    }
    return cell;
}

std::vector<PDFParagraph> particularNotes(const Dependency& dependency, const PDFSharedNotes& notes) {
    std::vector<PDFParagraph> paragraphs;
    for (const std::string_view note : notes.particularOf(dependency)) {
        paragraphs.push_back({.string = quietCellStyle(keepingQuotedDirection(note)),
                              .gapAbove = paragraphs.empty() ? 0.0 : 2.0});
    }
    return paragraphs;
}

/// One package of the list of all.
std::vector<Cell> cellsOf(const Dependency& dependency, const PDFContents& contents) {
    std::string from;
    if (contents.summary.byEcosystem.size() > 1) {
        from = shortLabel(dependency.ecosystem);
    }
    if (dependency.source) {
        appendItem(from, ", ", keepingPathDirection(shownSource(*dependency.source, dependency.name)));
    }
    std::vector<Cell> cells{nameCell(cellStyle, dependency), cellOf(cellStyle, dependency.version),
                            licenseCell(dependency), cellOf(quietCellStyle, shortLabel(dependency.basis)),
                            cellOf(remarkStyle, from)};
    if (contents.options.includeDev) {
        cells.push_back(cellOf(quietCellStyle, dependency.isDev ? "yes" : ""));
    }
    if (!contents.notes.notes().empty()) {
        cells.push_back(cellOf(quietCellStyle, contents.notes.numbersOf(dependency)));
    }
    return cells;
}

/// A column that nothing can stand in costs room, so it is left out, and the names get what it would take.
std::vector<Column> columnsOf(const PDFContents& contents) {
    std::vector<Column> columns{{.title = "Package", .width = 0.26, .namesRow = true},
                                {"Version", 0.12},
                                {"License", 0.20},
                                {"Found by", 0.135},
                                {"From", 0.285}};
    const auto addNarrow = [&](std::string_view title, double width) {
        columns.push_back({title, width});
        columns[0].width -= 0.4 * width;
        columns[2].width -= 0.2 * width;
        columns[4].width -= 0.4 * width;
    };
    if (contents.options.includeDev) {
        addNarrow("Dev only", 0.09);
    }
    if (!contents.notes.notes().empty()) {
        addNarrow("Notes", 0.07);
    }
    return columns;
}

/// The type of a license. All packages without one stand on one line, and may be of several types.
std::string typesOf(const ReportSummary::License& license, const PDFContents& contents) {
    std::set<LicenseCategory> types{license.category};
    for (const Dependency* dependency : contents.dependencies) {
        if (!dependency->license && license.name == "Unknown") {
            types.insert(dependency->category);
        }
    }
    std::string words;
    for (const LicenseCategory type : types) {
        appendItem(words, ", ", label(type));
    }
    return words;
}

}  // namespace

void addLicenses(PDFLayout& layout, const PDFContents& contents) {
    layout.heading("Licenses");
    PDFTable table(
        layout, "Licenses",
        {{.title = "License", .width = 0.52, .namesRow = true}, {"Type", 0.33}, {"Packages", 0.15, true}});
    for (const ReportSummary::License& license : contents.summary.licenses) {
        table.addRow({cellOf(cellStyle, license.name), cellOf(quietCellStyle, typesOf(license, contents)),
                      cellOf(cellStyle, std::to_string(license.count))});
    }
    const bool hasUndecided = std::ranges::any_of(
        contents.dependencies, [](const Dependency* dependency) { return !dependency->license; });
    table.place();
    if (hasUndecided) {
        layout.skip(6);
        layout.text(remarkStyle(
            "“Unknown” stands for every package of which no license was decided: “None found” where nothing names one, “Unrecognized” where what is named is no license that is known."));
    }
    layout.skip(sectionGap);
}

void addAttention(PDFLayout& layout, const PDFContents& contents) {
    const std::string title = "Needs attention";
    layout.heading(title);
    if (contents.summary.needsReview == 0) {
        layout.text(bodyStyle(
            "Nothing needs attention: every dependency has a recognized license that doesn't require sharing your code."));
    }
    const bool hasShared = !contents.notes.notes().empty();
    std::vector<Column> columns{{"Severity", 0.14},
                                {.title = "Package", .width = 0.23, .namesRow = true},
                                {"Version", 0.11},
                                {"License", 0.20},
                                {"Flags", hasShared ? 0.25 : 0.32}};
    if (hasShared) {
        columns.push_back({"Notes", 0.07});
    }
    constexpr std::size_t packageColumn = 1;
    PDFTable table(layout, title, std::move(columns), packageColumn);
    for (const Dependency* dependency : contents.dependencies) {
        // In the order of the result, like every list: a reader looks packages up by name.
        if (dependency->needsReview()) {
            Cell name = nameCell(boldCellStyle, *dependency);
            if (dependency->isDev) {
                name.push_back({.string = quietCellStyle("Dev only"), .gapAbove = 1});
            }
            std::vector<Cell> cells{severityCell(*dependency), std::move(name),
                                    cellOf(cellStyle, dependency->version), licenseCell(*dependency),
                                    flagsCell(*dependency)};
            if (hasShared) {
                cells.push_back(cellOf(quietCellStyle, contents.notes.numbersOf(*dependency)));
            }
            table.addRow(std::move(cells), particularNotes(*dependency, contents.notes));
        }
    }
    table.place();
    layout.skip(sectionGap);
}

void addSharedNotes(PDFLayout& layout, const PDFContents& contents) {
    const std::vector<PDFSharedNotes::Note>& notes = contents.notes.notes();
    if (notes.empty()) {
        return;
    }
    const std::string title = "Notes that several packages share";
    layout.heading(title);
    PDFTable table(layout, title,
                   {{.title = "Note", .width = 0.08, .namesRow = true},
                    {"What it says", 0.77},
                    {"Packages", 0.15, true}});
    for (std::size_t i = 0; i < notes.size(); ++i) {
        table.addRow({cellOf(boldCellStyle, std::to_string(i + 1)),
                      cellOf(cellStyle, keepingQuotedDirection(notes[i].text)),
                      cellOf(cellStyle, std::to_string(notes[i].packages))});
    }
    table.place();
    layout.skip(sectionGap);
}

void addDependencies(PDFLayout& layout, const PDFContents& contents, double heightOfWhatFollows) {
    const std::string title = fmt::format("All dependencies ({})", contents.dependencies.size());
    layout.heading(title);
    PDFTable table(layout, title, columnsOf(contents));
    for (const Dependency* dependency : contents.dependencies) {
        // What needs attention has its notes there.
        table.addRow(cellsOf(*dependency, contents), dependency->needsReview()
                                                         ? std::vector<PDFParagraph>{}
                                                         : particularNotes(*dependency, contents.notes));
    }
    table.place(heightOfWhatFollows);
    layout.skip(sectionGap);
}

}  // namespace ScanKit

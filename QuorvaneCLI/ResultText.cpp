#include "QuorvaneCLI/ResultText.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

#include <fmt/format.h>

namespace {

using ScanKit::Dependency;
using Dependencies = std::vector<const Dependency*>;

constexpr std::size_t columnCount = 6;
using Cells = std::array<std::string, columnCount>;
using Widths = std::array<std::size_t, columnCount>;

/// The columns, and how many terminal columns each keeps when the terminal is narrow. The narrowest give way last.
struct ColumnRow {
    std::string_view title;
    std::size_t least;
};
constexpr std::array<ColumnRow, columnCount> columnRows{{
    {"Package", 12},
    {"Version", 7},
    {"Ecosystem", 7},
    {"License", 12},
    {"Found by", 8},
    {"Flags", 14},
}};
constexpr std::size_t flagsColumn = 5;
constexpr std::string_view gap = "  ";
constexpr std::string_view flagSeparator = "; ";

std::string_view colourOf(ScanKit::Flag flag) {
    switch (severity(flag)) {
        case ScanKit::Flag::Severity::high:
            return "\x1b[31m";
        case ScanKit::Flag::Severity::medium:
            return "\x1b[33m";
        case ScanKit::Flag::Severity::low:
            return "\x1b[36m";
    }
    return "";
}
constexpr std::string_view boldText = "\x1b[1m";
constexpr std::string_view plainText = "\x1b[0m";

Cells cellsOf(const Dependency& dependency) {
    return {Terminal::safe(dependency.name) + (dependency.isDev ? " (dev)" : ""),
            Terminal::safe(dependency.version),
            std::string(label(dependency.ecosystem)),
            Terminal::safe(dependency.licenseDisplay()),
            std::string(shortLabel(dependency.basis)),
            dependency.flagLabels(flagSeparator)};
}

Widths naturalWidths(const std::vector<Cells>& rows) {
    Widths widths{};
    for (std::size_t i = 0; i < columnCount; ++i) {
        widths[i] = columnRows[i].title.size();
        for (const Cells& cells : rows) {
            widths[i] = std::max(widths[i], Terminal::width(cells[i]));
        }
    }
    return widths;
}

/// Takes from the widest column that is wider than its least width, until the table fits or no column can give.
void narrow(Widths& widths, const Widths& least, std::size_t columns) {
    const std::size_t gaps = gap.size() * (columnCount - 1);
    while (std::accumulate(widths.begin(), widths.end(), gaps) > columns) {
        std::size_t widest = columnCount;
        for (std::size_t i = 0; i < columnCount; ++i) {
            const bool canGive = widths[i] > least[i];
            if (canGive && (widest == columnCount || widths[i] > widths[widest])) {
                widest = i;
            }
        }
        // Every column is at its least: the line will be longer than the terminal, and still nothing is lost.
        if (widest == columnCount) {
            return;
        }
        --widths[widest];
    }
}

/// On a very narrow terminal no column keeps more than a character for certain.
Widths fittedWidths(Widths widths, std::size_t columns) {
    Widths least{};
    std::ranges::transform(columnRows, least.begin(), &ColumnRow::least);
    narrow(widths, least, columns);
    least.fill(1);
    narrow(widths, least, columns);
    return widths;
}

class ResultPrinter {
public:
    ResultPrinter(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                  const TextStyle& style)
        : result_(result),
          options_(options),
          style_(style),
          dependencies_(reportedDependencies(result, options)) {}

    std::string text() {
        printTitle();
        printSources();
        printTable();
        printNotes();
        printSummary();
        return std::move(text_);
    }

private:
    std::string coloured(std::string_view colour, std::string_view text) const {
        return style_.colour ? fmt::format("{}{}{}", colour, text, plainText) : std::string(text);
    }

    void heading(std::string_view text) { text_ += coloured(boldText, text) + "\n"; }

    void printTitle() {
        heading(Terminal::safe(options_.projectName));
        text_ += Terminal::safe(result_.rootPath) + "\n\n";
    }

    void printSources() {
        if (result_.sources.empty()) {
            text_ +=
                "No dependency files were found here (Package.resolved; package.json with the lockfile of npm, pnpm, Yarn or Bun; requirements.txt; the lockfile of Poetry, uv, PDM or Pipenv; a virtual environment).\n\n";
            return;
        }
        heading("Found");
        for (const ScanKit::ScanSource& source : result_.sources) {
            const std::string entries = source.entries ? "; " + inWords(*source.entries) : "";
            text_ += fmt::format("  {:<14}  {} ({}{})\n", label(source.ecosystem),
                                 Terminal::safe(source.path), Terminal::safe(source.kind), entries);
        }
        text_ += "\n";
    }

    void printTable() {
        if (dependencies_.empty()) {
            text_ += "No dependencies to report.\n\n";
            return;
        }
        std::vector<Cells> rows;
        rows.reserve(dependencies_.size());
        for (const Dependency* dependency : dependencies_) {
            rows.push_back(cellsOf(*dependency));
        }
        Widths widths = naturalWidths(rows);
        if (style_.columns) {
            widths = fittedWidths(widths, *style_.columns);
        }
        Cells titles;
        std::ranges::transform(columnRows, titles.begin(),
                               [](const ColumnRow& row) { return std::string(row.title); });
        heading(rowText(titles, widths));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            text_ += rowText(rows[i], widths, dependencies_[i]) + "\n";
        }
        text_ += "\n";
    }

    /// One line of the table; the flags of a dependency are coloured.
    std::string rowText(const Cells& cells, const Widths& widths,
                        const Dependency* dependency = nullptr) const {
        std::string line;
        for (std::size_t i = 0; i < columnCount; ++i) {
            const std::string cell = Terminal::fitted(cells[i], widths[i]);
            const std::size_t padding = widths[i] - std::min(widths[i], Terminal::width(cell));
            line += i == flagsColumn && dependency != nullptr ? colouredFlags(*dependency, cell) : cell;
            line += i + 1 < columnCount ? std::string(padding, ' ') + std::string(gap) : "";
        }
        // Blanks at the end would wrap on a terminal that is exactly as wide.
        line.erase(line.find_last_not_of(' ') + 1);
        return line;
    }

    /// The labels of the flags as they are shown, perhaps cut at the end, each in the colour of its severity.
    std::string colouredFlags(const Dependency& dependency, std::string_view shown) const {
        std::string text;
        for (const ScanKit::Flag flag : dependency.flags) {
            if (shown.empty()) {
                break;
            }
            const bool isWhole = shown.starts_with(label(flag));
            const std::string_view part = isWhole ? label(flag) : shown;
            text += coloured(colourOf(flag), part);
            shown.remove_prefix(part.size());
            const std::string_view separator = shown.substr(0, flagSeparator.size());
            text += separator == flagSeparator ? separator : "";
            shown.remove_prefix(separator == flagSeparator ? separator.size() : 0);
        }
        return text + std::string(shown);
    }

    void printNotes() {
        const bool any =
            std::ranges::any_of(dependencies_, [](const Dependency* one) { return one->needsReview(); });
        if (!any) {
            return;
        }
        heading("Needs review");
        for (const Dependency* dependency : dependencies_) {
            if (dependency->needsReview()) {
                printNotesOf(*dependency);
            }
        }
        text_ += "\n";
    }

    void printNotesOf(const Dependency& dependency) {
        text_ += fmt::format("  {} {} ({}): {}\n", Terminal::safe(dependency.name),
                             Terminal::safe(dependency.version), Terminal::safe(dependency.licenseDisplay()),
                             colouredFlags(dependency, dependency.flagLabels(flagSeparator)));
        for (const std::string& note : dependency.notes) {
            printWrapped(Terminal::safe(note), "      ");
        }
    }

    /// Breaks a sentence between words where the terminal ends.
    void printWrapped(std::string_view sentence, std::string_view indent) {
        const std::size_t columns = style_.columns.value_or(std::string::npos);
        std::string line;
        for (const std::string_view word : ScanKit::Text::split(sentence, " ")) {
            const std::size_t needed = indent.size() + Terminal::width(line) + 1 + Terminal::width(word);
            // A word longer than the line, such as an address, stands alone and runs on.
            if (!line.empty() && needed > columns) {
                text_ += fmt::format("{}{}\n", indent, line);
                line.clear();
            }
            line += line.empty() ? "" : " ";
            line += word;
        }
        text_ += fmt::format("{}{}\n", indent, line);
    }

    void printSummary() {
        const ScanKit::ReportSummary summary(dependencies_);
        heading("Summary");
        text_ += fmt::format("  {} dependencies: {} need review, {} copyleft, {} unknown or missing\n",
                             summary.total, summary.needsReview, summary.copyleft, summary.unknownOrMissing);
        printAccount();
        if (!options_.includeDev) {
            const auto isDev = [](const Dependency& one) { return one.isDev; };
            const auto left = std::ranges::count_if(result_.dependencies, isDev);
            if (left > 0) {
                const std::string packages = left == 1 ? "package is" : "packages are";
                text_ += fmt::format("  {} dev-only {} left out (--include-dev reports them too)\n", left,
                                     packages);
            }
        }
        text_ += "  This is information, not legal advice.\n";
    }

    /// Every reported dependency counts in exactly one of these.
    void printAccount() {
        std::size_t withText = 0, withoutText = 0, notOnDisk = 0, noLicense = 0;
        for (const Dependency* dependency : dependencies_) {
            if (dependency->has(ScanKit::Flag::notOnDisk)) {
                ++notOnDisk;
            } else if (!dependency->license) {
                ++noLicense;
            } else if (dependency->licenseText) {
                ++withText;
            } else {
                ++withoutText;
            }
        }
        text_ += fmt::format("  {} with license text, {} without, {} not on disk, {} with no license\n",
                             withText, withoutText, notOnDisk, noLicense);
    }

    const ScanKit::ScanResult& result_;
    const ScanKit::ReportOptions& options_;
    const TextStyle& style_;
    Dependencies dependencies_;
    std::string text_;
};

/// "the project → express@4.18.2 → cookie@0.5.0", or that nobody can tell.
std::string wayText(const Dependency& dependency) {
    if (dependency.way.empty()) {
        return "    No file that was read says who needs it.\n";
    }
    std::string text = "    the project";
    for (const std::string& step : dependency.way) {
        text += " → " + Terminal::safe(step);
    }
    return text + "\n";
}

}  // namespace

std::string whyText(const ScanKit::ScanResult& result, std::string_view name) {
    std::string text;
    for (const Dependency& dependency : result.dependencies) {
        if (dependency.name == name) {
            text += fmt::format("  {} {} ({}{})\n{}", Terminal::safe(dependency.name),
                                Terminal::safe(dependency.version), label(dependency.ecosystem),
                                dependency.isDev ? ", dev-only" : "", wayText(dependency));
        }
    }
    return text.empty() ? fmt::format("No dependency is named {}.\n", Terminal::safe(name)) : text;
}

std::string resultText(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                       const TextStyle& style) {
    return ResultPrinter(result, options, style).text();
}

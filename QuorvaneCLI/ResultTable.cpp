#include "QuorvaneCLI/ResultTable.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include <fmt/format.h>

namespace {

using ScanKit::Dependency;
using Dependencies = std::vector<const Dependency*>;

constexpr std::size_t columnCount = 5;
using Cells = std::array<std::string, columnCount>;

/// The columns before the flags: how narrow each may become, and what it costs to break one of its cells. A license is
/// what people look for, so that the others give way first.
struct ColumnRow {
    std::string_view title;
    std::size_t least, cost;
};
constexpr std::array<ColumnRow, columnCount> columnRows{{
    {"Package", 12, 1},
    {"Version", 7, 1},
    {"Ecosystem", 9, 2},
    {"License", 16, 4},
    {"Found by", 8, 2},
}};
constexpr std::size_t licenseColumn = 3;
/// Words of a license up to this length stay whole, such as "Classpath-exception-2.0".
constexpr std::size_t longestWholeWord = 24;
constexpr std::string_view flagsTitle = "Flags";
constexpr std::string_view flagSeparator = "; ";
constexpr std::string_view gap = "  ";
constexpr std::string_view flagIndent = "    ", nameIndent = "  ";

Cells cellsOf(const Dependency& dependency) {
    return {Terminal::safe(dependency.name) + (dependency.isDev ? " (dev)" : ""),
            Terminal::safe(dependency.version), std::string(label(dependency.ecosystem)),
            Terminal::safe(dependency.licenseDisplay()), std::string(shortLabel(dependency.basis))};
}

/// A column while its width is looked for: how many of its cells have which width.
class Column {
public:
    Column(std::size_t titleWidth, std::size_t least, std::size_t cost)
        : width_(titleWidth), least_(std::max(titleWidth, least)), cost_(cost) {}

    void add(std::size_t cellWidth) {
        ++cells_[cellWidth];
        width_ = std::max(width_, cellWidth);
    }
    void keepWhole(std::string_view cell) {
        for (const std::string_view word : ScanKit::Text::split(cell, " ")) {
            least_ = std::max(least_, std::min(Terminal::width(word), longestWholeWord));
        }
    }
    std::size_t width() const { return width_; }
    bool canGive() const { return width_ > least_; }
    void give() { --width_; }
    /// What the lines cost that its cells take beyond their first.
    std::size_t costAt(std::size_t width) const {
        std::size_t lines = 0;
        for (auto wider = cells_.upper_bound(width); wider != cells_.end(); ++wider) {
            lines += wider->second * ((wider->first - 1) / width);
        }
        return lines * cost_;
    }
    std::size_t costOfGiving() const { return costAt(width_ - 1) - costAt(width_); }

private:
    std::map<std::size_t, std::size_t> cells_;
    std::size_t width_, least_, cost_;
};
using Columns = std::vector<Column>;

std::size_t totalWidth(const Columns& columns) {
    std::size_t total = gap.size() * (columns.size() - 1);
    for (const Column& column : columns) {
        total += column.width();
    }
    return total;
}

std::size_t totalCost(const Columns& columns) {
    std::size_t total = 0;
    for (const Column& column : columns) {
        total += column.costAt(column.width());
    }
    return total;
}

/// Takes from the column where it breaks least, the widest of such, until the table fits; none when it cannot.
std::optional<Columns> fitted(Columns columns, std::size_t width) {
    while (totalWidth(columns) > width) {
        Column* chosen = nullptr;
        for (Column& column : columns) {
            if (!column.canGive()) {
                continue;
            }
            const bool isBetter =
                chosen == nullptr || column.costOfGiving() < chosen->costOfGiving() ||
                (column.costOfGiving() == chosen->costOfGiving() && column.width() > chosen->width());
            chosen = isBetter ? &column : chosen;
        }
        if (chosen == nullptr) {
            return std::nullopt;
        }
        chosen->give();
    }
    return columns;
}

/// The flags in lines of at most `columns`, broken only between two of them.
std::vector<std::string> flagLines(const Dependency& dependency, std::size_t columns,
                                   const TextStyle& style) {
    std::vector<std::string> lines;
    std::size_t used = 0;
    for (const ScanKit::Flag flag : dependency.flags) {
        const std::size_t needed = used + flagSeparator.size() + label(flag).size();
        if (used > 0 && needed <= columns) {
            lines.back() += std::string(flagSeparator) + style.flag(flag);
            used = needed;
        } else {
            lines.push_back(style.flag(flag));
            used = label(flag).size();
        }
    }
    return lines;
}

/// The cell in lines of at most `columns`. A name that goes on does so behind blanks, lest it be taken for another one.
std::vector<std::string> cellLines(const std::string& cell, std::size_t columns, std::string_view indent) {
    if (Terminal::width(cell) <= columns) {
        return {cell};
    }
    const std::string first = Terminal::wrapped(cell, columns, Terminal::LongWords::broken).front();
    std::vector<std::string> lines{first};
    const std::string_view rest = ScanKit::Text::trimmedOfBlanks(std::string_view(cell).substr(first.size()));
    for (const std::string& line :
         Terminal::wrapped(rest, columns - indent.size(), Terminal::LongWords::broken)) {
        lines.push_back(std::string(indent) + line);
    }
    return lines;
}

class Table {
public:
    Table(const Dependencies& dependencies, const TextStyle& style)
        : dependencies_(dependencies), style_(style) {
        for (const Dependency* dependency : dependencies) {
            cells_.push_back(cellsOf(*dependency));
        }
    }

    std::string text() {
        const std::optional<Columns> layout = chosenLayout();
        if (!layout) {
            return listText();
        }
        Cells titles;
        std::ranges::transform(columnRows, titles.begin(), &ColumnRow::title);
        const bool hasFlagsColumn = layout->size() > columnCount;
        addRow(titles, *layout, {hasFlagsColumn ? std::string(flagsTitle) : ""}, true);
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const Dependency& dependency = *dependencies_[i];
            addRow(cells_[i], *layout,
                   hasFlagsColumn ? flagLines(dependency, layout->back().width(), style_)
                                  : std::vector<std::string>{},
                   false);
            if (!hasFlagsColumn) {
                addFlagsBelow(dependency);
            }
        }
        return std::move(text_);
    }

private:
    Columns naturalColumns() const {
        Columns columns;
        for (std::size_t i = 0; i < columnCount; ++i) {
            Column& column =
                columns.emplace_back(columnRows[i].title.size(), columnRows[i].least, columnRows[i].cost);
            for (const Cells& cells : cells_) {
                column.add(Terminal::width(cells[i]));
                if (i == licenseColumn) {
                    column.keepWhole(cells[i]);
                }
            }
        }
        return columns;
    }

    Column flagsColumn() const {
        std::size_t longest = 0;
        for (const Dependency* dependency : dependencies_) {
            for (const ScanKit::Flag flag : dependency->flags) {
                longest = std::max(longest, label(flag).size());
            }
        }
        Column column(flagsTitle.size(), longest, 1);
        for (const Dependency* dependency : dependencies_) {
            column.add(dependency->flagLabels(flagSeparator).size());
        }
        return column;
    }

    /// With a column of flags or with flags below their packages, whichever breaks fewer lines; none when not even
    /// the second fits.
    std::optional<Columns> chosenLayout() const {
        const Columns natural = naturalColumns();
        Columns withFlags = natural;
        withFlags.push_back(flagsColumn());
        if (!style_.columns) {
            return withFlags;
        }
        const std::optional<Columns> beside = fitted(withFlags, *style_.columns);
        const std::optional<Columns> above = fitted(natural, *style_.columns);
        if (!beside || !above) {
            return above;
        }
        const auto flagged =
            std::ranges::count_if(dependencies_, [](const Dependency* one) { return !one->flags.empty(); });
        const std::size_t costAbove = totalCost(*above) + static_cast<std::size_t>(flagged);
        return totalCost(*beside) <= costAbove ? beside : above;
    }

    void addRow(const Cells& cells, const Columns& columns, const std::vector<std::string>& flags,
                bool isTitle) {
        std::array<std::vector<std::string>, columnCount> parts;
        std::size_t height = std::max<std::size_t>(flags.size(), 1);
        for (std::size_t i = 0; i < columnCount; ++i) {
            parts[i] = cellLines(cells[i], columns[i].width(), i == 0 ? nameIndent : "");
            height = std::max(height, parts[i].size());
        }
        for (std::size_t at = 0; at < height; ++at) {
            std::string line;
            for (std::size_t i = 0; i < columnCount; ++i) {
                const std::string_view part = at < parts[i].size() ? parts[i][at] : std::string_view();
                const std::size_t taken = std::min(Terminal::width(part), columns[i].width());
                line += std::string(part) + std::string(columns[i].width() - taken, ' ') + std::string(gap);
            }
            line += at < flags.size() ? flags[at] : "";
            // Blanks at the end would wrap on a terminal that is exactly as wide.
            line.erase(line.find_last_not_of(' ') + 1);
            text_ += (isTitle ? style_.bold(line) : line) + "\n";
        }
    }

    void addFlagsBelow(const Dependency& dependency) {
        const std::size_t columns = style_.columns.value_or(0);
        for (const std::string& line :
             flagLines(dependency, columns - std::min(columns, flagIndent.size()), style_)) {
            text_ += std::string(flagIndent) + line + "\n";
        }
    }

    /// For a terminal too narrow for columns.
    std::string listText() {
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            const auto& [name, version, ecosystem, license, basis] = cells_[i];
            text_ += style_.paragraph(version.empty() ? name : name + " " + version, "", "  ");
            text_ += style_.paragraph(license, "  ", "    ");
            text_ += style_.paragraph(fmt::format("{}; {}", ecosystem, basis), "  ", "    ");
            addFlagsBelow(*dependencies_[i]);
        }
        return std::move(text_);
    }

    const Dependencies& dependencies_;
    const TextStyle& style_;
    std::vector<Cells> cells_;
    std::string text_;
};

}  // namespace

std::string resultTable(const std::vector<const Dependency*>& dependencies, const TextStyle& style) {
    return Table(dependencies, style).text();
}

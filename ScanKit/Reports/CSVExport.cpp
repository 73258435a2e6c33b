#include "ScanKit/Reports/Exports.h"

#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Support/Text.h"

#include <array>
#include <cmath>
#include <locale>
#include <sstream>

#include <fmt/format.h>

namespace ScanKit::Exports {
namespace {

constexpr std::size_t columnCount = 13;
using Row = std::array<std::string, columnCount>;

/// A decimal number from end to end, as every spreadsheet reads it; not infinite, not in base 16.
bool isFiniteNumber(const std::string& field) {
    if (field.find_first_not_of("0123456789+-.eE") != std::string::npos) {
        return false;
    }
    std::istringstream input(field);
    input.imbue(std::locale::classic());
    double value = 0;
    input >> value;
    return !input.fail() && input.peek() == std::istringstream::traits_type::eof() && std::isfinite(value);
}

/// A cell that begins like this is run as a formula by a spreadsheet, whoever wrote it.
bool looksLikeFormula(const std::string& field) {
    static constexpr std::string_view beginnings = "=+-@\t\r";
    // What combines with the first character makes another one for a reader, and the same one for a spreadsheet.
    return !field.empty() && beginnings.find(field.front()) != std::string_view::npos &&
           !isFiniteNumber(field);
}

/// Whole characters are compared: the pair CR LF is one character, and none of these.
bool needsQuotes(std::string_view field) {
    static constexpr std::string_view special = ",\"\n\r";
    if (field.find_first_of(special) == std::string_view::npos) {
        return false;
    }
    bool found = false;
    Text::forEachCharacter(field, [&](std::string_view character) {
        found = found || (character.size() == 1 && special.find(character.front()) != std::string_view::npos);
    });
    return found;
}

void appendField(std::string& output, std::string_view field) {
    if (!needsQuotes(field)) {
        output += field;
        return;
    }
    output += '"';
    for (const char c : field) {
        output.append(c == '"' ? 2 : 1, c);
    }
    output += '"';
}

void appendRow(std::string& output, Row row) {
    for (std::size_t i = 0; i < columnCount; ++i) {
        if (i > 0) {
            output += ',';
        }
        // Before quoting, for quotes do not keep a spreadsheet from running a formula.
        if (looksLikeFormula(row[i])) {
            row[i].insert(row[i].begin(), '\'');
        }
        appendField(output, row[i]);
    }
    output += "\r\n";
}

Row rowOf(const Dependency& dependency) {
    return {std::string(shortLabel(dependency.ecosystem)),
            dependency.name,
            dependency.version,
            dependency.license.value_or(""),
            std::string(label(dependency.category)),
            std::string(label(dependency.basis)),
            dependency.matchScore ? fmt::format("{:.0f}%", *dependency.matchScore * 100) : "",
            dependency.flagLabels("; "),
            dependency.isDev ? "yes" : "no",
            dependency.declared.value_or(""),
            Text::joined(dependency.licenseFileNames, "; "),
            dependency.source.value_or(""),
            Text::joined(dependency.notes, " ")};
}

}  // namespace

std::string csv(const ScanResult& result, const ReportOptions& options) {
    const std::vector<const Dependency*> dependencies = reportedDependencies(result, options);
    std::string output;
    output.reserve(200 * (dependencies.size() + 1));
    appendRow(output, {"Ecosystem", "Package", "Version", "License", "Type", "Found by", "Match", "Flags",
                       "Dev only", "Declared", "License files", "Source", "Notes"});
    for (const Dependency* dependency : dependencies) {
        appendRow(output, rowOf(*dependency));
    }
    return output;
}

}  // namespace ScanKit::Exports

#include "QuorvaneCLI/OptionTable.h"

#include "QuorvaneCLI/ExitStatus.h"
#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Flag.h"
#include "ScanKit/Model/LicenseCategory.h"
#include "ScanKit/Reports/Paper.h"
#include "ScanKit/Reports/ReportFormats.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::string_view printed = "What is printed", reports = "Reports", read = "What is read",
                           scripts = "For scripts", other = "About the command";
using enum OptionValue;
constexpr auto rows = std::to_array<OptionRow>({
    {printed, "", "json", "", none, false, "Print the JSON report in place of the table"},
    {printed, "", "why", "NAME", text, false,
     "Print how the project comes to this package, in place of the table"},
    {printed, "", "color", "WHEN", colorChoice, false,
     "When to use colors: {}. With auto, in a terminal that has them, unless NO_COLOR is set"},
    {printed, "", "quiet", "", none, false, "Show no progress"},
    {reports, "o", "output", "DIR", folder, false, "Write reports into this folder, made when missing"},
    {reports, "", "formats", "LIST", format, true,
     "Which reports to write: {}, with commas between them; all but html when left out. Needs --output"},
    {reports, "", "include-dev", "", none, false, "Report packages that only the development needs, too"},
    {reports, "", "project-name", "TEXT", text, false,
     "The name that the reports print; that of the folder when left out"},
    {reports, "", "prepared-for", "TEXT", text, false, "The client that the reports name"},
    {reports, "", "prepared-by", "TEXT", text, false, "Who prepared the reports"},
    {reports, "", "paper", "SIZE", paperSize, false, "The PDF's paper: {}; that of the locale when left out"},
    {read, "", "ecosystem", "NAME", ecosystem, false,
     "Read only the packages of {}; repeatable. Those that the folder holds when left out"},
    {read, "", "checkouts", "DIR", folder, false, "A folder of checked-out Swift packages; repeatable"},
    {read, "", "python-env", "DIR", folder, false,
     "A virtual environment or site-packages folder in place of the detected ones; repeatable"},
    {read, "", "no-derived-data", "", none, false, "Leave the development tools' build-products folder out"},
    {scripts, "", "fail-on", "LIST", failOnName, true,
     "Exit with 1 when a reported dependency needs review, or has one of these categories or flags: {}, with commas between them"},
    {other, "h", "help", "", none, false, "Print this help and exit"},
    {other, "", "version", "", none, false, "Print the version and exit"},
});

constexpr auto examples = std::to_array<CommandExample>({
    {"quorvane .", "What this project depends on, and what needs a decision"},
    {"quorvane --output reports --prepared-for \"A client\" .", "All reports, for a client"},
    {"quorvane --formats notice --output App/Resources .", "The file that ships with an app"},
    {"quorvane --why left-pad .", "How the project comes to a package"},
    {"quorvane --quiet --fail-on strongCopyleft,missing .", "A check for a build that fails when it is met"},
});

constexpr auto statuses = std::to_array<ExitStatusRow>({
    {done, "done"},
    {failOnMet, "a reported dependency meets --fail-on"},
    {wrongUsage,
     "wrong usage, or something that cannot be read or saved: a folder, a report, or, with --fail-on, a dependency file"},
});

template <typename Row>
std::vector<std::string> rawValuesOf(const Row& values) {
    std::vector<std::string> names;
    for (const auto& value : values) {
        names.emplace_back(rawValue(value));
    }
    return names;
}

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (const ScanKit::ReportFormat& row : ScanKit::reportFormats()) {
        names.emplace_back(row.rawValue);
    }
    return names;
}

/// Some names are those of a category and of a flag, and stand once.
std::vector<std::string> failOnNames() {
    std::vector<std::string> names{"review"};
    for (const auto& list : {rawValuesOf(ScanKit::allLicenseCategories), rawValuesOf(ScanKit::allFlags)}) {
        for (const std::string& name : list) {
            if (std::ranges::find(names, name) == names.end()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

}  // namespace

const std::string_view commandPurpose =
    "Lists the open-source licenses of a project's dependencies and writes license reports.";
const std::string_view commandPromise =
    "It only reads the folder. What it says is information, not legal advice.";

std::span<const OptionRow> optionRows() {
    return rows;
}

const OptionRow& optionRow(std::string_view name) {
    return *std::ranges::find(rows, name, &OptionRow::name);
}

std::vector<std::string> choicesFor(OptionValue value) {
    switch (value) {
        case none:
        case text:
        case folder:
            return {};
        case colorChoice:
            return {"auto", "always", "never"};
        case format:
            return formatNames();
        case paperSize:
            return {std::string(rawValue(ScanKit::Paper::a4)), std::string(rawValue(ScanKit::Paper::letter))};
        case ecosystem:
            return rawValuesOf(ScanKit::allEcosystems);
        case failOnName:
            return failOnNames();
    }
    return {};
}

std::string inWords(std::vector<std::string> names, std::string_view lastWord) {
    const std::string last = std::move(names.back());
    names.pop_back();
    return ScanKit::Text::joined(names, ", ") + " " + std::string(lastWord) + " " + last;
}

std::string describedOption(const OptionRow& row) {
    const std::vector<std::string> choices = choicesFor(row.value);
    return choices.empty() ? std::string(row.description)
                           : ScanKit::Text::replacingAll(row.description, "{}", inWords(choices, "or"));
}

std::span<const CommandExample> commandExamples() {
    return examples;
}

std::span<const ExitStatusRow> exitStatusRows() {
    return statuses;
}

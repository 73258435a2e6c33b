#include "QuorvaneCLI/ManualPage.h"

#include "QuorvaneCLI/OptionTable.h"
#include "ScanKit/Support/Text.h"

#include <BuildVersion.h>
#include <fmt/format.h>

namespace {

/// Text that means itself: a hyphen stays one that can be copied, and no line begins with a request.
std::string escaped(std::string_view text) {
    std::string result = ScanKit::Text::replacingAll(text, "\\", "\\e");
    result = ScanKit::Text::replacingAll(result, "-", "\\-");
    result = ScanKit::Text::replacingAll(result, "\"", "\\(dq");
    result = ScanKit::Text::replacingAll(result, "'", "\\(aq");
    return result.starts_with('.') ? "\\&" + result : result;
}

std::string section(std::string_view title) {
    return fmt::format(".SH {}\n", title);
}

std::string entry(std::string_view head, std::string_view text) {
    return fmt::format(".TP\n{}\n{}\n", head, escaped(text));
}

std::string optionEntry(const OptionRow& row) {
    std::string head = row.shortName.empty() ? "" : fmt::format("\\fB\\-{}\\fR, ", row.shortName);
    head += fmt::format("\\fB\\-\\-{}\\fR", escaped(row.name));
    head += row.valueName.empty() ? "" : fmt::format(" \\fI{}\\fR", row.valueName);
    return entry(head, describedOption(row) + ".");
}

std::string options() {
    std::string text = section("OPTIONS");
    std::string_view group;
    for (const OptionRow& row : optionRows()) {
        if (row.group != group) {
            group = row.group;
            text += fmt::format(".SS {}\n", group);
        }
        text += optionEntry(row);
    }
    return text;
}

std::string exitStatus() {
    std::string text = section("EXIT STATUS");
    for (const ExitStatusRow& row : exitStatusRows()) {
        text += entry(std::to_string(row.status), row.meaning);
    }
    return text;
}

std::string environment() {
    return section("ENVIRONMENT") +
           entry("NO_COLOR",
                 "When it is set and not empty, no colors are used unless --color asks for them.") +
           entry("TERM", "A terminal of the kind dumb gets no colors.") +
           entry(
               "SOURCE_DATE_EPOCH",
               "The time that the reports carry, in seconds since 1970, for a build that must be reproducible.");
}

std::string examples() {
    std::string text = section("EXAMPLES");
    for (const CommandExample& example : commandExamples()) {
        text += fmt::format(".TP\n.B {}\n{}.\n", escaped(example.command), escaped(example.meaning));
    }
    return text;
}

}  // namespace

std::string manualPage() {
    return fmt::format(".TH QUORVANE 1 \"{}\" \"quorvane {}\" \"User Commands\"\n", BuildVersion::date,
                       BuildVersion::number) +
           section("NAME") + "quorvane \\- list the open-source licenses of a project's dependencies\n" +
           section("SYNOPSIS") + ".B quorvane\n[\\fIOPTIONS\\fR] \\fIFOLDER\\fR\n" + section("DESCRIPTION") +
           escaped(commandPurpose) + "\n" + escaped(commandPromise) +
           "\n.PP\nResults go to standard output; progress, warnings and errors to standard error.\n"
           "In a terminal all text wraps at its width; elsewhere it never wraps.\n" +
           options() + exitStatus() + environment() + examples();
}

#include "QuorvaneCLI/HelpText.h"

#include "QuorvaneCLI/OptionTable.h"
#include "QuorvaneCLI/TextStyle.h"

#include <BuildVersion.h>
#include <fmt/format.h>

namespace {

constexpr TextStyle style{.columns = 80};
/// Where the descriptions begin.
constexpr std::size_t indent = 28;

std::string namesOf(const OptionRow& row) {
    const std::string before = row.shortName.empty() ? "    " : fmt::format("-{}, ", row.shortName);
    return fmt::format("  {}--{}{}{}", before, row.name, row.valueName.empty() ? "" : " ", row.valueName);
}

std::string optionText(const OptionRow& row) {
    return style.paragraph(describedOption(row), fmt::format("{:<{}}", namesOf(row), indent),
                           std::string(indent, ' '));
}

std::string describedStatuses() {
    std::string text;
    for (const ExitStatusRow& row : exitStatusRows()) {
        text += style.paragraph(row.meaning, fmt::format("  {}  ", row.status), "     ");
    }
    return text;
}

}  // namespace

std::string helpText() {
    std::string text =
        "Usage: quorvane [OPTIONS] FOLDER\n\n" +
        style.paragraph(std::string(commandPurpose) + " " + std::string(commandPromise), "", "");
    std::string_view group;
    for (const OptionRow& row : optionRows()) {
        if (row.group != group) {
            group = row.group;
            text += fmt::format("\n{}:\n", group);
        }
        text += optionText(row);
    }
    text += "\nExit status:\n" + describedStatuses() + "\nExamples:\n";
    for (const CommandExample& example : commandExamples()) {
        text += fmt::format("  {}\n      {}\n", example.command, example.meaning);
    }
    return text;
}

std::string versionText() {
    const std::string built = BuildVersion::commit.empty()
                                  ? ""
                                  : fmt::format(" ({}, {})", BuildVersion::commit, BuildVersion::date);
    return fmt::format("quorvane {}{}\n", BuildVersion::number, built);
}

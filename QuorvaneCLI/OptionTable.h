#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What an option takes.
enum class OptionValue : std::uint8_t {
    none,
    text,
    folder,
    colorChoice,
    format,
    paperSize,
    ecosystem,
    failOnName
};

/// All that is said of an option in one place: the reader of the command line, the help, the manual page and the
/// completions of the shells are made of this table.
struct OptionRow {
    std::string_view group;
    std::string_view shortName;  ///< "o", or empty
    std::string_view name;       ///< "output"
    std::string_view valueName;  ///< "DIR"; empty for an option without a value
    OptionValue value;
    bool isList;                   ///< the value is names with commas between them
    std::string_view description;  ///< "{}" stands for the choices; `describedOption` fills them in
};

/// The options in the order of the help, those of a group together.
std::span<const OptionRow> optionRows();
/// The row of this name, which there is.
const OptionRow& optionRow(std::string_view name);
/// The names that such a value is one of; empty when it can be anything.
std::vector<std::string> choicesFor(OptionValue value);

/// "a, b or c".
std::string inWords(std::vector<std::string> names, std::string_view lastWord);
/// What the option does, with its choices.
std::string describedOption(const OptionRow& row);

/// A command as people type it, and what it does.
struct CommandExample {
    std::string_view command, meaning;
};
std::span<const CommandExample> commandExamples();

/// The exit statuses and when the command ends with them.
struct ExitStatusRow {
    int status;
    std::string_view meaning;
};
std::span<const ExitStatusRow> exitStatusRows();

/// What the command is for, and what it never does: two sentences.
extern const std::string_view commandPurpose, commandPromise;

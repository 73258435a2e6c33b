#include "QuorvaneCLI/Completions.h"

#include "QuorvaneCLI/OptionTable.h"
#include "ScanKit/Support/Text.h"

#include <vector>

#include <fmt/format.h>

namespace {

/// "-o" and "--output", as they are typed.
std::vector<std::string> spellings(const OptionRow& row) {
    std::vector<std::string> names{"--" + std::string(row.name)};
    if (!row.shortName.empty()) {
        names.insert(names.begin(), "-" + std::string(row.shortName));
    }
    return names;
}

std::string choicesOf(const OptionRow& row) {
    return ScanKit::Text::joined(choicesFor(row.value), " ");
}

/// What the option does in a line of a menu: as far as the choices, which the shell shows itself, or the first stop.
std::string shortDescription(const OptionRow& row) {
    const std::string text = describedOption(row);
    return text.substr(0, text.find_first_of(":;."));
}

/// Within single quotes of a shell.
std::string quoted(std::string_view text) {
    return "'" + ScanKit::Text::replacingAll(text, "'", "'\\''") + "'";
}

/// Within single quotes of fish, which knows an escape there.
std::string quotedForFish(std::string_view text) {
    return "'" + ScanKit::Text::replacingAll(ScanKit::Text::replacingAll(text, "\\", "\\\\"), "'", "\\'") +
           "'";
}

/// How bash completes what stands after an option; nothing for one without a value.
std::string bashCase(const OptionRow& row) {
    if (row.value == OptionValue::none) {
        return {};
    }
    const std::string names = ScanKit::Text::joined(spellings(row), "|");
    if (row.value == OptionValue::text) {
        return fmt::format("    {}) return ;;\n", names);
    }
    if (row.value == OptionValue::folder) {
        return fmt::format("    {}) _quorvane_folders \"$current\"; return ;;\n", names);
    }
    return fmt::format("    {}) _quorvane_{} \"$current\" \"{}\"; return ;;\n", names,
                       row.isList ? "list" : "choices", choicesOf(row));
}

constexpr std::string_view bashBeginning = R"(# Completes the command quorvane in bash.
_quorvane_choices() {
    COMPREPLY=($(compgen -W "$2" -- "$1"))
}
# The last of the names between commas.
_quorvane_list() {
    local before=
    case $1 in *,*) before=${1%,*}, ;; esac
    COMPREPLY=($(compgen -P "$before" -W "$2" -- "${1##*,}"))
    compopt -o nospace 2>/dev/null
}
_quorvane_folders() {
    local IFS=$'\n'
    COMPREPLY=($(compgen -d -- "$1"))
    compopt -o filenames 2>/dev/null
}
_quorvane() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]}
    # "--option=value" comes as three words.
    if [ "$current" = = ]; then
        current=
    elif [ "$option" = = ]; then
        option=${COMP_WORDS[COMP_CWORD-2]}
    fi
    COMPREPLY=()
    case $option in
)";

/// How zsh completes the value of an option: ":what:how".
std::string zshValue(const OptionRow& row) {
    const std::string choices = choicesOf(row);
    std::string how = " ";
    if (row.value == OptionValue::none) {
        return {};
    }
    if (row.value == OptionValue::folder) {
        how = "_files -/";
    } else if (!choices.empty()) {
        how = row.isList ? "_sequence compadd - " + choices : "(" + choices + ")";
    }
    return fmt::format(":{}:{}", row.valueName, how);
}

std::string zshOption(const OptionRow& row) {
    std::string text;
    for (const std::string& name : spellings(row)) {
        const std::string_view repeat = row.value == OptionValue::none ? "" : "*";
        const std::string_view assign = row.value == OptionValue::none ? ""
                                        : name.starts_with("--")       ? "="
                                                                       : "+";
        text +=
            "    " +
            quoted(fmt::format("{}{}{}[{}]{}", repeat, name, assign, shortDescription(row), zshValue(row))) +
            " \\\n";
    }
    return text;
}

std::string fishOption(const OptionRow& row) {
    std::string text = "complete -c quorvane";
    if (!row.shortName.empty()) {
        text += fmt::format(" -s {}", row.shortName);
    }
    text += fmt::format(" -l {} -d {}", row.name, quotedForFish(shortDescription(row)));
    const std::string choices = choicesOf(row);
    std::string values;
    if (row.value == OptionValue::folder) {
        values = "(__fish_complete_directories)";
    } else if (!choices.empty()) {
        values = row.isList ? "(__fish_append , " + choices + ")" : choices;
    }
    text += row.value == OptionValue::none ? "" : " -x";
    text += values.empty() ? "" : " -a " + quotedForFish(values);
    return text + "\n";
}

}  // namespace

std::string bashCompletion() {
    std::string text(bashBeginning), names;
    for (const OptionRow& row : optionRows()) {
        text += bashCase(row);
        names += (names.empty() ? "" : " ") + ScanKit::Text::joined(spellings(row), " ");
    }
    return text + fmt::format(R"(    esac
    case $current in
    -*) _quorvane_choices "$current" "{}" ;;
    *) _quorvane_folders "$current" ;;
    esac
}}
complete -F _quorvane quorvane
)",
                              names);
}

std::string zshCompletion() {
    std::string text = "#compdef quorvane\n# Completes the command quorvane in zsh.\n_arguments -s -S \\\n";
    for (const OptionRow& row : optionRows()) {
        text += zshOption(row);
    }
    return text + "    ':FOLDER:_files -/'\n";
}

std::string fishCompletion() {
    std::string text =
        "# Completes the command quorvane in fish.\ncomplete -c quorvane -x -a '(__fish_complete_directories)'\n";
    for (const OptionRow& row : optionRows()) {
        text += fishOption(row);
    }
    return text;
}

#include "ScanKit/Readers/Python/Requirements.h"

#include "ScanKit/Support/Regex.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ScanKit::PythonParser {
namespace {

std::string_view withoutComment(std::string_view line) {
    static const Regex commentStart(R"((^|\s)#)");
    const std::optional<Regex::Match> comment = commentStart.firstMatch(line);
    return Text::trimmed(line.substr(0, comment ? comment->begin : line.size()));
}

/// The text with the lines put together that a backslash at the end continues. A comment goes on to the end of its own.
std::string withJoinedLines(std::string_view text) {
    std::string joined;
    joined.reserve(text.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        const bool goesOn = line.ends_with('\\') && !Text::trimmed(line).starts_with('#');
        line.remove_suffix(goesOn ? 1 : 0);
        joined += line;
        joined += goesOn ? ' ' : '\n';
    }
    return joined;
}

/// True of an option, an address or a local path.
bool namesNoPackage(std::string_view line) {
    return line.empty() || line.find_first_of("-./") == 0 || line.find("://") != std::string_view::npos;
}

/// The version of "==1.0" or "===1.0"; a range is none.
std::optional<std::string> exactVersion(std::string_view requirement) {
    static const Regex exactPin(R"(===?\s*[^\s,;]+)");
    const std::optional<Regex::Match> pin = exactPin.firstMatch(requirement);
    if (!pin) {
        return std::nullopt;
    }
    std::string version(requirement.substr(pin->begin, pin->end - pin->begin));
    std::erase(version, '=');
    return std::string(Text::trimmed(version));
}

std::optional<Requirement> requirementOf(std::string_view line, bool isDev) {
    static const Regex nameAtStart("^[A-Za-z0-9][A-Za-z0-9._-]*");
    std::string_view requirement = withoutComment(line);
    if (namesNoPackage(requirement)) {
        return std::nullopt;
    }
    // What follows the semicolon says in which environments the requirement holds.
    requirement = requirement.substr(0, requirement.find(';'));
    // Hashes and other options of one requirement.
    requirement = Text::trimmed(requirement.substr(0, requirement.find(" --")));
    const std::optional<Regex::Match> name = nameAtStart.firstMatch(requirement);
    if (!name) {
        return std::nullopt;
    }
    return Requirement{.name = std::string(requirement.substr(0, name->end)),
                       .version = exactVersion(requirement),
                       .isDev = isDev};
}

/// The first word of a line, which may stand in quotes.
std::string firstWord(std::string_view text) {
    text = Text::trimmed(text);
    const bool isQuoted = text.starts_with('"') || text.starts_with('\'');
    if (isQuoted) {
        return std::string(text.substr(1, std::min(text.find(text[0], 1), text.size()) - 1));
    }
    return std::string(text.substr(0, text.find_first_of(" \t")));
}

struct IncludeOption {
    std::string_view name;
    bool isConstraint;
};

constexpr std::array<IncludeOption, 4> includeOptions{
    {{"--requirement", false}, {"--constraint", true}, {"-r", false}, {"-c", true}}};

std::optional<RequirementInclude> includeOf(std::string_view line) {
    for (const IncludeOption& option : includeOptions) {
        if (!line.starts_with(option.name)) {
            continue;
        }
        std::string_view value = line.substr(option.name.size());
        // Only behind a short name the file may follow at once.
        const bool isLong = option.name.starts_with("--");
        if (isLong && !value.starts_with('=') && !value.starts_with(' ') && !value.starts_with('\t')) {
            continue;
        }
        value.remove_prefix(isLong && value.starts_with('=') ? 1 : 0);
        if (std::string file = firstWord(value); !file.empty()) {
            return RequirementInclude{.file = std::move(file), .isConstraint = option.isConstraint};
        }
    }
    return std::nullopt;
}

}  // namespace

std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev) {
    std::vector<Requirement> requirements;
    const std::string joined = withJoinedLines(text);
    for (const std::string_view line : Text::nonEmptyLines(joined)) {
        if (std::optional<Requirement> requirement = requirementOf(line, isDev)) {
            requirements.push_back(std::move(*requirement));
        }
    }
    return requirements;
}

std::vector<RequirementInclude> includesOfText(std::string_view text) {
    std::vector<RequirementInclude> includes;
    const std::string joined = withJoinedLines(text);
    for (const std::string_view line : Text::nonEmptyLines(joined)) {
        if (std::optional<RequirementInclude> include = includeOf(withoutComment(line))) {
            includes.push_back(std::move(*include));
        }
    }
    return includes;
}

}  // namespace ScanKit::PythonParser

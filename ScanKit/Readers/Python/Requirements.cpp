#include "ScanKit/Readers/Python/Requirements.h"

#include "ScanKit/Support/Regex.h"
#include "ScanKit/Support/Text.h"

#include <utility>

namespace ScanKit::PythonParser {
namespace {

std::string_view withoutComment(std::string_view line) {
    static const Regex commentStart(R"((^|\s)#)");
    const std::optional<Regex::Match> comment = commentStart.firstMatch(line);
    return Text::trimmed(line.substr(0, comment ? comment->begin : line.size()));
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
    requirement = Text::trimmed(requirement.substr(0, requirement.find(';')));
    const std::optional<Regex::Match> name = nameAtStart.firstMatch(requirement);
    if (!name) {
        return std::nullopt;
    }
    return Requirement{.name = std::string(requirement.substr(0, name->end)),
                       .version = exactVersion(requirement),
                       .isDev = isDev};
}

}  // namespace

std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev) {
    std::vector<Requirement> requirements;
    for (const std::string_view line : Text::nonEmptyLines(text)) {
        if (std::optional<Requirement> requirement = requirementOf(line, isDev)) {
            requirements.push_back(std::move(*requirement));
        }
    }
    return requirements;
}

}  // namespace ScanKit::PythonParser

#pragma once

#include <optional>
#include <string>

namespace ScanKit::PythonParser {

/// One package that a project declares, in whichever file.
struct Requirement {
    std::string name;                    ///< as written
    std::optional<std::string> version;  ///< present when exactly one is asked for
    bool isDev = false;

    bool operator==(const Requirement&) const = default;
};

}  // namespace ScanKit::PythonParser

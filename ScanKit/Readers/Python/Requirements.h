#pragma once

#include "ScanKit/Readers/Python/Requirement.h"

#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// The requirements of a requirements file, each marked with `isDev`. Options, addresses and local paths are left
/// out, and so is a line that names no package. A line that ends with a backslash goes on with the next.
std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev);

/// Another file that a requirements file names.
struct RequirementInclude {
    std::string file;  ///< as written: relative to the folder of the file that names it, or an address
    bool isConstraint = false;  ///< it only says which versions to take

    bool operator==(const RequirementInclude&) const = default;
};

/// What the options -r and -c of a requirements file, by their short or long names, name.
std::vector<RequirementInclude> includesOfText(std::string_view text);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Model/Dependency.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::Exports {

/// One text that the notices give for a package, with what is to be said about it. Views look into the dependency or into
/// what is built into the program.
struct NoticePart {
    std::vector<std::string> remarks;       ///< in plain words, to be told apart from the text
    std::optional<std::string_view> text;   ///< as it stands; absent when there is none to give
    std::optional<std::string> identifier;  ///< of the license or exception, where the text is a built-in one
    bool isNotice = false;                  ///< the package's own NOTICE, not its license

    bool operator==(const NoticePart&) const = default;
};

/// What stands below a package's name in the notices, in order: its license, which is its own text where it ships one, else
/// the built-in texts of its license, else that there is none; then its own notice.
std::vector<NoticePart> noticeParts(const Dependency& dependency);

}  // namespace ScanKit::Exports

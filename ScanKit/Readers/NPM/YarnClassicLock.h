#pragma once

#include "ScanKit/Readers/NPM/Manifest.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The notation of Yarn's version 1 lockfile, which is its own: what is asked for, ended by a colon, and indented below it
/// what was chosen.
namespace ScanKit::NPMParser {

struct ClassicEntry {
    std::vector<std::string> patterns;  ///< all that this entry answers: "a@^1.0.0", "a@~1.2.0"
    std::string version;                ///< empty when the entry has none
    std::string resolved;               ///< where it was downloaded from, as written; empty when it was not
    std::vector<Request> dependencies;
    std::vector<Request> optionalDependencies;

    bool operator==(const ClassicEntry&) const = default;
};

/// A lockfile of 10,000 packages has some 4 MB; what is larger than this is taken for none.
inline constexpr std::size_t mostYarnClassicBytes = std::size_t{64} << 20;

/// The entries in the order of the file; none for a file of comments alone. Absent when a line is not of this notation, such
/// as the marks of an unfinished merge or a text that breaks off within quotation marks, and beyond the size.
std::optional<std::vector<ClassicEntry>> readYarnClassic(std::string_view text);

}  // namespace ScanKit::NPMParser

#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace ScanKit::PythonParser {

/// Whether a condition holds, as far as that is known without knowing the environment.
struct MarkerVerdict {
    bool mayHold = true;
    bool mayFail = true;

    bool operator==(const MarkerVerdict&) const = default;
};

/// What a marker says of groups and extras: `isChosen("extras", "x")` answers for "x" in extras, and so for
/// "dependency_groups". Comparisons with the environment may hold and may fail, and so does a text that is no marker.
MarkerVerdict markerVerdict(std::string_view marker,
                            const std::function<bool(std::string_view set, std::string_view name)>& isChosen);

}  // namespace ScanKit::PythonParser

#pragma once

#include <optional>
#include <string_view>

namespace ScanKit {

/// One of the standard license texts that are built into the library, byte for byte as it stands in
/// ScanKit/Licenses/<name>.txt. The view lives as long as the program. Absent for any other name; names are
/// compared exactly ("MIT", "GPL-3.0").
std::optional<std::string_view> standardText(std::string_view name);

}  // namespace ScanKit

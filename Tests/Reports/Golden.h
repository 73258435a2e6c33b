#pragma once

#include <string>

namespace ScanKit {

/// Compares with the file of this name in Tests/Golden byte for byte. QUORVANE_REWRITE_GOLDEN=1 in the
/// environment writes the file instead: read the difference before it is committed.
void expectGolden(const std::string& name, const std::string& written);

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/ScanResult.h"

#include <optional>
#include <string>
#include <string_view>

namespace ScanKit {

/// Records as JSON, keyed by their field names; enumerations as their raw values; the date as ISO 8601 in UTC;
/// an absent field is left out, and invalid UTF-8 becomes U+FFFD. No program of ours writes such a file: it is for those
/// who use the library and want to keep a whole result or send it on. The JSON report has a shape of its own.
std::string encoded(const ScanSource& source);
std::string encoded(const Dependency& dependency);
std::string encoded(const ScanResult& result);

/// The record that was encoded. None when the text is not JSON, a field that must be there is missing or of
/// another type, or a raw value is unknown. Null counts as absent. Keys that the record does not have are passed over.
std::optional<ScanSource> decodedScanSource(std::string_view json);
std::optional<Dependency> decodedDependency(std::string_view json);
std::optional<ScanResult> decodedScanResult(std::string_view json);

}  // namespace ScanKit

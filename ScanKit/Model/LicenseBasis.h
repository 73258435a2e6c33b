#pragma once

#include "ScanKit/Model/EnumerationTable.h"

#include <optional>
#include <string_view>

namespace ScanKit {

/// On what evidence the license of a dependency was decided. Not ordered.
enum class LicenseBasis { metadataAndText, metadata, classifier, text, notice, none };

inline constexpr auto allLicenseBases = enumerators<LicenseBasis>();

/// The short name that machine-readable output uses, such as "metadataAndText".
std::string_view rawValue(LicenseBasis basis);
/// The words that people read, such as "Metadata and license file".
std::string_view label(LicenseBasis basis);
/// The words for a narrow table column, such as "Metadata + file"; an em dash when nothing was found.
std::string_view shortLabel(LicenseBasis basis);
/// The basis with exactly this raw value, or none.
std::optional<LicenseBasis> licenseBasisFromRawValue(std::string_view rawValue);

}  // namespace ScanKit

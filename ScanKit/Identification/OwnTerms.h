#pragma once

#include <cstdint>
#include <span>

namespace ScanKit {

/// True when words that stand in no known license ask or forbid something: a restriction, a condition of use, another
/// agreement. `words` are some of LicenseText::words.
bool setsTerms(std::span<const std::uint64_t> words);

}  // namespace ScanKit

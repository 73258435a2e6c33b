#pragma once

#include "ScanKit/Identification/LicenseWords.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ScanKit {

/// The families (SPDX::baseID) that a text calls by a name people use ("the MIT license", "GPLv3"), each once, in the order of
/// a table. `words` are LicenseText::words.
std::vector<std::string> licensesNamedIn(std::span<const std::uint64_t> words);

/// For each sentence in which a text says that its licenses are a choice ("dual licensed", "you may choose", "either of"), the
/// families that it names there, or in the list behind it. Sentences about a part of the package, or about commercial
/// terms, offer none.
std::vector<std::vector<std::string>> offeredChoices(const LicenseText& text);

}  // namespace ScanKit

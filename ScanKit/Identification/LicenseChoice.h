#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ScanKit {

/// The families (SPDX::baseID) that a text calls by a name people use ("the MIT license", "GPLv3"), each once, in the order of
/// a table. `words` are LicenseText::words.
std::vector<std::string> licensesNamedIn(std::span<const std::uint64_t> words);

/// For each place where a text says that its licenses are a choice ("dual licensed", "you may choose", "either of"), the
/// families that it names around there, each once. What the families are worth is for whoever knows the text's licenses.
std::vector<std::vector<std::string>> offeredChoices(std::span<const std::uint64_t> words);

}  // namespace ScanKit

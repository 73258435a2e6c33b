#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ScanKit {

/// True when some words of a text that stand in no known license, those from `begin` to `end`, ask or forbid something: a
/// restriction, a condition of use, another agreement. `words` are LicenseText::words.
bool setsTerms(std::span<const std::uint64_t> words, std::size_t begin, std::size_t end);

/// The same for a few words within a sentence that is otherwise a license's: "for non-commercial purposes". Only what says so
/// by itself counts.
bool restricts(std::span<const std::uint64_t> words);

}  // namespace ScanKit

#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace ScanKit {

/// True when the words lack the sentence in which this license grants what it grants, as every true copy of it has it:
/// "for any purpose with or without fee is hereby granted". A copy that grants less differs in a word or two. Licenses
/// without such a row lack nothing.
bool lacksKeySentence(std::string_view licenseId, std::span<const std::uint64_t> words);

}  // namespace ScanKit

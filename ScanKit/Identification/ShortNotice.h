#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// The known licenses that the "SPDX-License-Identifier:" lines of a text name.
struct TaggedLicenses {
    std::vector<std::string> ids;  ///< each once, in order
    bool isChoice = false;         ///< a line offers them as one
};
TaggedLicenses taggedLicenses(std::string_view text);

/// The GNU license that a text of a few words calls by a short name, such as "GPLv3"; the most restrictive of several.
/// `words` are LicenseText::words.
std::optional<std::string_view> gnuNameIn(std::span<const std::uint64_t> words);

}  // namespace ScanKit

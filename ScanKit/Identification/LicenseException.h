#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace ScanKit {

/// An exception that a license file adds to its license.
struct LicenseException {
    std::string_view id;      ///< its SPDX identifier
    std::string_view family;  ///< how the ids begin of the licenses that it belongs to
    std::string_view words;   ///< that tell it, in lower case, joined by blanks
    std::size_t longest =
        0;  ///< the words that its whole text takes at most; more is more than the exception
};

/// An exception that a text states.
struct StatedException {
    const LicenseException* exception;
    std::size_t at;  ///< the place of its telling words in LicenseText::words
};

/// The first exception that these words state, or none.
std::optional<StatedException> exceptionIn(std::span<const std::uint64_t> words);

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/EnumerationTable.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace ScanKit {

/// A problem found with a dependency's license. A class around the enumeration, so that `Flag::Severity` and
/// `Flag::missing` both read as they are spoken. The order is meaningful: the most serious come first, and a
/// dependency keeps its flags in this order.
class Flag {
public:
    enum Case : std::uint8_t {
        networkCopyleft,
        strongCopyleft,
        proprietary,
        missing,
        unknown,
        mismatch,
        weakCopyleft,
        notOnDisk,
        noLicenseFile,
    };

    enum class Severity { low = 0, medium = 1, high = 2 };

    /// A flag is its case. There is no way back but `position`: with both, `std::ranges::find(flags, Flag::missing)`
    /// could not tell which of the two to compare.
    constexpr Flag(Case value) : value_(value) {}  // NOLINT(google-explicit-constructor)

    /// Its place among all flags, from 0.
    constexpr std::size_t position() const { return value_; }

    /// The severity with this integer value (0, 1 or 2), or none.
    static std::optional<Severity> severityFromRawValue(int rawValue);

    constexpr auto operator<=>(const Flag&) const = default;

private:
    Case value_;
};

/// All flags, the most serious first.
inline constexpr auto allFlags = enumerators<Flag::Case>();

/// The short name that machine-readable output uses, such as "noLicenseFile".
std::string_view rawValue(Flag flag);
/// The words that people read, such as "No license file".
std::string_view label(Flag flag);
Flag::Severity severity(Flag flag);
/// The flag with exactly this raw value, or none.
std::optional<Flag> flagFromRawValue(std::string_view rawValue);

}  // namespace ScanKit

template <>
struct std::hash<ScanKit::Flag> {
    std::size_t operator()(ScanKit::Flag flag) const { return flag.position(); }
};

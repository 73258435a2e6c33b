#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace ScanKit {

/// A problem found with a dependency's license. A class around the enumeration, so that `Flag::Severity` and
/// `Flag::missing` both read as they are spoken. The order is meaningful: the most serious come first, and a
/// dependency keeps its flags in this order.
class Flag {
public:
    enum Case {
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

    constexpr Flag(Case value) : value_(value) {}  // NOLINT(google-explicit-constructor): a flag is its case
    constexpr operator Case() const { return value_; }  // NOLINT(google-explicit-constructor)

    /// The severity with this integer value (0, 1 or 2), or none.
    static std::optional<Severity> severityFromRawValue(int rawValue);

private:
    Case value_;
};

inline constexpr std::array<Flag, 9> allFlags{
    Flag::networkCopyleft, Flag::strongCopyleft, Flag::proprietary, Flag::missing,       Flag::unknown,
    Flag::mismatch,        Flag::weakCopyleft,   Flag::notOnDisk,   Flag::noLicenseFile,
};

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
    std::size_t operator()(ScanKit::Flag flag) const { return static_cast<std::size_t>(flag); }
};

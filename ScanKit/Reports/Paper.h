#pragma once

#include <optional>
#include <string_view>

namespace ScanKit {

/// The paper that a report is laid out for.
enum class Paper { letter, a4 };

/// The name for a command line: "letter" or "a4".
std::string_view rawValue(Paper paper);
/// The paper with exactly this raw value, or none.
std::optional<Paper> paperFromRawValue(std::string_view rawValue);

/// What lies in a printer where this locale is spoken: "en_US.UTF-8" is letter, "de_DE" is A4. Letter for a name without a
/// territory ("C", "POSIX", nothing).
Paper paperOfLocale(std::string_view name);
/// The same for the locale that the environment names: LC_ALL, else LC_PAPER, else LANG.
Paper paperOfEnvironment();

}  // namespace ScanKit

#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace ScanKit {

/// A point in time, to the second.
using Date = std::chrono::sys_seconds;

namespace Dates {

/// Now; or what SOURCE_DATE_EPOCH says (seconds since 1970 in decimal), so that builds can be reproduced. A
/// value that is not a whole number of the years 0 to 9999 is passed over.
Date current();
/// "2026-01-05T14:03:22Z": ISO 8601 in UTC without fractional seconds.
std::string iso8601(Date date);
/// The date that `iso8601` wrote, or none for any other text.
std::optional<Date> fromIso8601(std::string_view text);
/// "January 5, 2026": US English, in the user's time zone.
std::string longDate(Date date);

}  // namespace Dates
}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <string>
#include <string_view>

/// The text exports, each a pure function of the result, the options and the time zone. The texts are UTF-8 without a
/// byte-order mark.
namespace ScanKit::Exports {

/// Said by every export.
inline constexpr std::string_view disclaimer =
    "This list was made from the project's dependency files. It is not legal advice.";

/// The third-party notices: a list of all reported packages, then a block for each with its license text.
std::string notice(const ScanResult& result, const ReportOptions& options);
/// What `notice` holds as one page for a browser, which loads nothing and runs nothing: a list of the packages, then each text
/// once, with all packages that it belongs to.
std::string html(const ScanResult& result, const ReportOptions& options);
/// One row a package, for a spreadsheet: CR LF line ends, cells that look like formulas made harmless.
std::string csv(const ScanResult& result, const ReportOptions& options);
/// The project, sources, warnings, counts and one object a package; keys sorted.
std::string json(const ScanResult& result, const ReportOptions& options);

}  // namespace ScanKit::Exports

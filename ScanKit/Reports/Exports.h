#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <string>
#include <string_view>

/// The three text exports, each a pure function of the result, the options and the time zone, and the names of
/// all four report files. The texts are UTF-8 without a byte-order mark.
namespace ScanKit::Exports {

/// Said by every export.
inline constexpr std::string_view disclaimer =
    "This list was made from the project's dependency files. It is not legal advice.";

/// The third-party notices: a list of all reported packages, then a block for each with its license text.
std::string notice(const ScanResult& result, const ReportOptions& options);
/// One row a package, for a spreadsheet: CR LF line ends, cells that look like formulas made harmless.
std::string csv(const ScanResult& result, const ReportOptions& options);
/// The project, sources, warnings, counts and one object a package; keys sorted.
std::string json(const ScanResult& result, const ReportOptions& options);

struct FileNames {
    std::string pdf, notice, csv, json;
    bool operator==(const FileNames&) const = default;
};
/// The names of the report files of a project: "/" and ":" in its name become "-".
FileNames fileNames(std::string_view projectName);

}  // namespace ScanKit::Exports

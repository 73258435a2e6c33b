#pragma once

#include "ScanKit/Reports/Paper.h"

#include <filesystem>
#include <optional>
#include <string>

namespace ScanKit {

inline constexpr const char* productName = "Quorvane";

/// What the reports print beside the result, and which dependencies they hold.
struct ReportOptions {
    std::string projectName;            ///< printed in every report, and part of the file names
    std::string preparedFor;            ///< the client; empty when none was given
    std::string preparedBy;             ///< the person or studio; empty when none was given
    bool includeDev = false;            ///< dev-only packages are reported too
    Paper paper = Paper::letter;        ///< of the PDF
    std::string appName = productName;  ///< named as the generator

    bool operator==(const ReportOptions&) const = default;
};

/// The project's name in reports: the one that was given, unless it is empty; else that of its folder; else, when there
/// is none, the product's.
std::string reportedProjectName(const std::string& given, const std::optional<std::filesystem::path>& folder);

}  // namespace ScanKit

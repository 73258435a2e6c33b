#pragma once

#include <string>

namespace ScanKit {

/// What the reports print beside the result, and which dependencies they hold.
struct ReportOptions {
    std::string projectName;           ///< printed in every report, and part of the file names
    std::string preparedFor;           ///< the client; empty when none was given
    std::string preparedBy;            ///< the person or studio; empty when none was given
    bool includeDev = false;           ///< dev-only packages are reported too
    std::string appName = "Quorvane";  ///< named as the generator

    bool operator==(const ReportOptions&) const = default;
};

}  // namespace ScanKit

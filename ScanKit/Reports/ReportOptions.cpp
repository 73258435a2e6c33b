#include "ScanKit/Reports/ReportOptions.h"

#include "ScanKit/Support/Paths.h"

namespace ScanKit {

std::string reportedProjectName(const std::string& given,
                                const std::optional<std::filesystem::path>& folder) {
    if (!given.empty()) {
        return given;
    }
    return folder ? displayName(*folder) : productName;
}

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportFormats.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// The outcome of saving reports.
struct SavedReports {
    std::vector<std::filesystem::path> files;  ///< the files written, in order
    std::optional<std::string>
        failure;                       ///< the system's reason when saving stopped; absent when all went well
    std::filesystem::path failedFile;  ///< the file that saving stopped at; empty when all went well
    std::vector<std::string> warnings;  ///< what the files written cannot show, a sentence each
    bool operator==(const SavedReports&) const = default;
};

/// Writes the chosen reports into an existing folder, in the order of `reportFormats`. Each file appears whole or not at
/// all: see `saveFile`. The first failure stops it; files written before stay.
SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder);

}  // namespace ScanKit

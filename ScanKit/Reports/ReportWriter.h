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
        failure;  ///< the system's reason when saving stopped; absent when all went well
    std::vector<std::string> warnings;  ///< what the files written cannot show, a sentence each
    bool operator==(const SavedReports&) const = default;
};

/// Writes the chosen reports into an existing folder, in the order of `reportFormats`. Each file appears
/// whole or not at all: it is written aside in the same folder, flushed and moved into place, replacing a
/// file of the same name. The first failure stops it; files written before stay, and no leftover remains.
SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder);

/// Writes one file as described above; the system's reason when that fails.
std::optional<std::string> saveFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace ScanKit

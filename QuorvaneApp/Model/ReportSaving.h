#pragma once

#include "ScanKit/Reports/ReportOptions.h"
#include "ScanKit/Reports/ReportWriter.h"

#include <cstddef>
#include <filesystem>
#include <functional>

#include <QString>

/// Writes some reports into a folder, as `ScanKit::saveReports` does.
using SaveFunction =
    std::function<ScanKit::SavedReports(const ScanKit::ScanResult&, const ScanKit::ReportOptions&,
                                        ScanKit::ReportFormats, const std::filesystem::path& folder)>;

/// Which of the chosen reports is being written.
struct SavingProgress {
    std::size_t done = 0;  ///< reports that are on disk
    std::size_t total = 0;
    QString fileName;  ///< of the one in work
    bool operator==(const SavingProgress&) const = default;
};

/// Writes the reports one after the other, in their order, and tells before each which it is. The first that
/// fails ends it.
ScanKit::SavedReports saveOneByOne(const SaveFunction& save, const ScanKit::ScanResult& result,
                                   const ScanKit::ReportOptions& options, ScanKit::ReportFormats formats,
                                   const std::filesystem::path& folder,
                                   const std::function<void(const SavingProgress&)>& onProgress);

#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// The report formats as bits of a set, in the order in which they are written.
enum class ReportFormats : unsigned { none = 0, pdf = 1, notice = 2, csv = 4, json = 8 };

constexpr ReportFormats operator|(ReportFormats a, ReportFormats b) {
    return static_cast<ReportFormats>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
constexpr bool contains(ReportFormats set, ReportFormats one) {
    return (static_cast<unsigned>(set) & static_cast<unsigned>(one)) != 0;
}

/// The outcome of saving reports.
struct SavedReports {
    std::vector<std::filesystem::path> files;  ///< the files written, in order
    std::optional<std::string>
        failure;  ///< the system's reason when saving stopped; absent when all went well
    bool operator==(const SavedReports&) const = default;
};

/// Writes the chosen reports into an existing folder, in the order PDF, NOTICE, CSV, JSON. Each file appears
/// whole or not at all: it is written aside in the same folder, flushed and moved into place, replacing a
/// file of the same name. The first failure stops it; files written before stay, and no leftover remains.
SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder);

/// Writes one file as described above; the system's reason when that fails.
std::optional<std::string> saveFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace ScanKit

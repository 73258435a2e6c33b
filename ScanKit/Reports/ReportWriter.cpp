#include "ScanKit/Reports/ReportWriter.h"

#include "ScanKit/Support/AtomicFile.h"

#include <stdexcept>

namespace ScanKit {
namespace {

/// Adds the file to what was saved, or why it was not.
void save(SavedReports& saved, const ReportFormat& format, const ScanResult& result,
          const ReportOptions& options, const std::filesystem::path& folder) {
    const std::filesystem::path file = folder / fileName(format, options.projectName);
    try {
        saved.failure = saveFile(file, format.bytes(result, options));
    } catch (const std::runtime_error& error) {
        saved.failure = error.what();
    }
    if (saved.failure) {
        saved.failedFile = file;
        return;
    }
    saved.files.push_back(file);
    if (std::optional<std::string> warning =
            format.warning ? format.warning(result, options) : std::nullopt) {
        saved.warnings.push_back(std::move(*warning));
    }
}

}  // namespace

SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder) {
    SavedReports saved;
    for (const ReportFormat& format : reportFormats()) {
        if (contains(formats, format.bit) && !saved.failure) {
            save(saved, format, result, options, folder);
        }
    }
    return saved;
}

}  // namespace ScanKit

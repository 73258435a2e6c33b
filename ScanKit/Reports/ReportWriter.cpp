#include "ScanKit/Reports/ReportWriter.h"

#include "ScanKit/Support/AtomicFile.h"

namespace ScanKit {

SavedReports saveReports(const ScanResult& result, const ReportOptions& options, ReportFormats formats,
                         const std::filesystem::path& folder) {
    SavedReports saved;
    for (const ReportFormat& format : reportFormats()) {
        if (!contains(formats, format.bit)) {
            continue;
        }
        const std::filesystem::path file = folder / fileName(format, options.projectName);
        saved.failure = saveFile(file, format.bytes(result, options));
        if (saved.failure) {
            saved.failedFile = file;
            return saved;
        }
        saved.files.push_back(file);
        if (std::optional<std::string> warning =
                format.warning ? format.warning(result, options) : std::nullopt) {
            saved.warnings.push_back(std::move(*warning));
        }
    }
    return saved;
}

}  // namespace ScanKit

#include "QuorvaneApp/Model/ReportSaving.h"

#include "QuorvaneApp/Model/Texts.h"

#include <algorithm>

ScanKit::SavedReports saveOneByOne(const SaveFunction& save, const ScanKit::ScanResult& result,
                                   const ScanKit::ReportOptions& options, ScanKit::ReportFormats formats,
                                   const std::filesystem::path& folder,
                                   const std::function<void(const SavingProgress&)>& onProgress) {
    SavingProgress progress;
    for (const ScanKit::ReportFormat& format : ScanKit::reportFormats()) {
        progress.total += ScanKit::contains(formats, format.bit) ? 1 : 0;
    }
    ScanKit::SavedReports all;
    for (const ScanKit::ReportFormat& format : ScanKit::reportFormats()) {
        if (!ScanKit::contains(formats, format.bit)) {
            continue;
        }
        const std::string name = ScanKit::fileName(format, options.projectName);
        progress.fileName = Texts::fromUtf8(name);
        onProgress(progress);
        const ScanKit::SavedReports one = save(result, options, format.bit, folder);
        std::ranges::copy(one.files, std::back_inserter(all.files));
        std::ranges::copy(one.warnings, std::back_inserter(all.warnings));
        if (one.failure) {
            all.failure = one.failure;
            all.failedFile = one.failedFile;
            break;
        }
        ++progress.done;
    }
    return all;
}

#include "QuorvaneApp/Model/ScanRunner.h"

#include "QuorvaneApp/Model/FolderProblem.h"
#include "QuorvaneApp/Model/Texts.h"
#include "ScanKit/Scan/ProjectDetection.h"

#include <utility>

namespace {

using ProgressHandler = std::function<void(const ScanningProgress&)>;

/// A folder that disappears halfway would look like one with fewer packages, so it is looked at again.
ScanOutcome outcomeOf(const ScanFunction& scan, const ScanRequest& request,
                      const ScanKit::ScanControl& control) {
    if (const auto problem = folderProblem(request.folder)) {
        return {.problem = *problem};
    }
    ScanFindings found = scan(request, control);
    if (const auto problem = folderProblem(request.folder)) {
        return {.problem = *problem};
    }
    if (control.stop.stop_requested()) {
        return {};
    }
    return {.project =
                std::make_shared<const ScannedProject>(std::move(found.detection), std::move(found.result))};
}

ScanKit::ScanControl controlOf(const ScanKit::StopToken& stop, Background& background,
                               const ProgressHandler& onProgress, ScanKit::FileCache& cache) {
    return {.progress =
                [stop, &background, onProgress](const ScanKit::ScanProgress& progress) {
                    ScanningProgress shown{progress.done, progress.total, Texts::fromUtf8(progress.name)};
                    background.post([stop, onProgress, shown = std::move(shown)] {
                        // Looked at on arrival, too: what is in the mailbox may come from a scan that was given up.
                        if (!stop.stop_requested()) {
                            onProgress(shown);
                        }
                    });
                },
            .stop = stop,
            .cache = &cache};
}

}  // namespace

ScanFindings scanFolder(const ScanRequest& request, const ScanKit::ScanControl& control) {
    ScanFindings found{.detection = ScanKit::detect(request.folder)};
    const ScanKit::ScanOptions options{
        .ecosystems = found.detection.ecosystemsToRead(request.pythonEnvironments),
        .checkoutFolders = request.extraCheckouts,
        .pythonEnvironments = request.pythonEnvironments,
        .useXcodeDerivedData = true,
    };
    found.result = ScanKit::Scanner::scan(request.folder, options, found.detection, control);
    return found;
}

ScanRunner::ScanRunner(ScanFunction scan, Background& background)
    : scan_(std::move(scan)), background_(&background) {}

void ScanRunner::start(ScanRequest request, ProgressHandler onProgress,
                       std::function<void(const ScanOutcome&)> onFinished) {
    cancel();
    if (!cache_ || request.folder != folder_) {
        folder_ = request.folder;
        cache_ = std::make_shared<ScanKit::FileCache>();
    }
    current_ = background_->start([scan = scan_, background = background_, cache = cache_,
                                   request = std::move(request), onProgress = std::move(onProgress),
                                   onFinished = std::move(onFinished)](const ScanKit::StopToken& stop) {
        const ScanOutcome outcome =
            outcomeOf(scan, request, controlOf(stop, *background, onProgress, *cache));
        return [stop, outcome, onFinished] {
            if (!stop.stop_requested()) {
                onFinished(outcome);
            }
        };
    });
}

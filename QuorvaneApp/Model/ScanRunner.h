#pragma once

#include "QuorvaneApp/Model/Background.h"
#include "QuorvaneApp/Model/ScannedProject.h"
#include "ScanKit/Scan/Scanner.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QString>

/// What the user asked to scan.
struct ScanRequest {
    std::filesystem::path folder;
    std::vector<std::filesystem::path> extraCheckouts;
    std::vector<std::filesystem::path> pythonEnvironments;
};

struct ScanFindings {
    ScanKit::Detection detection;
    ScanKit::ScanResult result;
};

/// Detects and scans; runs on a background thread.
using ScanFunction = std::function<ScanFindings(const ScanRequest&, const ScanKit::ScanControl&)>;

/// The library's own detection and scan: the ecosystems that the folder holds, and Python too when the user
/// chose an environment.
ScanFindings scanFolder(const ScanRequest& request, const ScanKit::ScanControl& control);

/// How far the running scan is. `total` is 0 while the number of packages is not known yet.
struct ScanningProgress {
    std::size_t done = 0;
    std::size_t total = 0;
    QString name;  ///< one of the packages
};

/// Either what was found, or a plain sentence that says why the folder could not be scanned.
struct ScanOutcome {
    std::shared_ptr<const ScannedProject> project;
    QString problem;
};

/// Runs one scan at a time: a new one ends the one before, of which nothing is heard any more. Another scan of the same
/// folder takes over what has not changed since; the next folder starts anew.
class ScanRunner {
public:
    ScanRunner(ScanFunction scan, Background& background);

    void start(ScanRequest request, std::function<void(const ScanningProgress&)> onProgress,
               std::function<void(const ScanOutcome&)> onFinished);
    void cancel() { current_.request_stop(); }

private:
    ScanFunction scan_;
    Background* background_;
    std::filesystem::path folder_;
    /// Of the scans of this folder; one that was ended may still hold it.
    std::shared_ptr<ScanKit::FileCache> cache_;
    std::stop_source current_{std::nostopstate};
};

#pragma once

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "QuorvaneApp/Platform/FolderChooser.h"

#include <condition_variable>
#include <initializer_list>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <QTemporaryDir>

/// Answers the questions for folders; without an answer it cancels.
class FakeFolderChooser : public FolderChooser {
public:
    void choose(const FolderQuestion& question, Answer chosen) override;

    std::optional<std::filesystem::path> answer;
    std::vector<FolderQuestion> questions;
};

/// Remembers what was to be shown in the file manager.
class RecordingFileRevealer : public FileRevealer {
public:
    void reveal(const std::vector<std::filesystem::path>& files) override { revealed.push_back(files); }

    std::vector<std::vector<std::filesystem::path>> revealed;
};

/// Scans that end only when the test releases them, in the order in which it does.
class HeldScans {
public:
    ScanFunction function();
    /// Lets the scan that began as number `index` end with these findings. May be called before it begins.
    void release(std::size_t index, ScanFindings findings);
    /// The scans begun so far.
    std::vector<ScanRequest> begun();
    /// Whether the scan was told to stop when it ended.
    bool wasStopped(std::size_t index);

private:
    ScanFindings run(const ScanRequest& request, const ScanKit::ScanControl& control);

    std::mutex lock_;
    std::condition_variable changed_;
    std::vector<ScanRequest> begun_;
    std::map<std::size_t, ScanFindings> released_;
    std::map<std::size_t, bool> stopped_;
};

/// A dependency with what a test cares about; the rest as a plain, unflagged MIT package.
ScanKit::Dependency package(const std::string& name, ScanKit::Ecosystem ecosystem = ScanKit::Ecosystem::npm);
ScanKit::Dependency flagged(const std::string& name, std::vector<ScanKit::Flag> flags,
                            ScanKit::LicenseCategory category = ScanKit::LicenseCategory::permissive,
                            std::optional<std::string> license = "MIT");
/// Findings with these dependencies; every ecosystem among them counts as detected.
ScanFindings findings(std::vector<ScanKit::Dependency> dependencies, std::vector<std::string> warnings = {});
/// A scan that always finds the same.
ScanFunction alwaysFinding(ScanFindings found);

/// A folder on disk that may be scanned, with path and name at hand.
struct ProjectFolder {
    QTemporaryDir directory;
    std::filesystem::path path() const { return directory.path().toStdString(); }
    /// A new folder inside it.
    std::filesystem::path folder(const std::string& name) const;
    /// A file inside it, folders on the way made.
    std::filesystem::path write(const std::string& name, const std::string& content) const;
};

/// The names of the rows that the model shows.
std::vector<std::string> shownNames(const AppModel& model);

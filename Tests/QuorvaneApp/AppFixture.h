#pragma once

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "QuorvaneApp/Platform/FolderChooser.h"
#include "Tests/QuorvaneApp/Words.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QDebug>
#include <QTemporaryDir>
#include <QTest>

/// Answers the questions for folders; without an answer the panels stay open.
class FakeFolderChooser : public FolderChooser {
public:
    void choose(const FolderQuestion& question, Answer chosen) override {
        questions.push_back(question);
        if (answer) {
            chosen(*answer);
        } else {
            openPanels.push_back(std::move(chosen));
        }
    }

    std::optional<std::filesystem::path> answer;
    std::vector<FolderQuestion> questions;
    std::vector<Answer> openPanels;
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
    ScanFunction function() {
        return [this](const ScanRequest& request, const ScanKit::ScanControl& control) {
            return run(request, control);
        };
    }
    /// Lets the scan that began as number `index` end with these findings. May be called before it begins.
    void release(std::size_t index, ScanFindings findings) {
        const std::lock_guard guard(lock_);
        released_[index] = std::move(findings);
        changed_.notify_all();
    }
    /// The scans begun so far.
    std::vector<ScanRequest> begun() {
        const std::lock_guard guard(lock_);
        return begun_;
    }
    /// Whether the scan was told to stop when it ended.
    bool wasStopped(std::size_t index) {
        const std::lock_guard guard(lock_);
        return stopped_[index];
    }

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
ScanFindings findings(std::vector<ScanKit::Dependency> dependencies,
                      std::vector<ScanKit::ScanWarning> warnings = {});
/// A scan that always finds the same.
ScanFunction alwaysFinding(ScanFindings found);

/// Keeps the program's settings in a folder of its own for as long as it lives; a member of the test that
/// remembers something.
class TemporarySettings {
public:
    TemporarySettings();

private:
    QTemporaryDir directory_;
};

/// A folder on disk that may be scanned, with path and name at hand.
struct ProjectFolder {
    QTemporaryDir directory;
    std::filesystem::path path() const { return directory.path().toStdString(); }
    /// A new folder inside it.
    std::filesystem::path folder(const std::string& name) const;
    /// A file inside it, folders on the way made.
    std::filesystem::path write(const std::string& name, const std::string& content) const;
};

/// A model whose panels, scans and file manager the test answers.
struct ModelFixture {
    explicit ModelFixture(ScanFunction scan, AppModel::SaveFunction save = ScanKit::saveReports,
                          bool persist = false);

    /// Opens a folder of the fixture's, made when missing, and waits for its scan.
    bool open(const std::string& name = "Harbor") {
        model.openFolder(project.folder(name));
        return waitForScan();
    }
    /// True once no scan runs.
    bool waitForScan() {
        return QTest::qWaitFor([this] { return !model.scanning(); });
    }
    /// The names of the rows that the model shows, with blanks between them.
    QString shown() const;

    ProjectFolder project;
    FakeFolderChooser chooser;
    RecordingFileRevealer revealer;
    AppModel model;
};

// What a comparison that fails shows of the values.
namespace ScanKit {

QDebug operator<<(QDebug debug, const ReportOptions& options);

}  // namespace ScanKit
namespace QTest {

template <>
inline char* toString(const std::string& text) {
    return qstrdup(text.c_str());
}
template <>
inline char* toString(const std::filesystem::path& path) {
    return qstrdup(path.c_str());
}

}  // namespace QTest

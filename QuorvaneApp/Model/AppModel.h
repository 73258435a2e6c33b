#pragma once

#include "QuorvaneApp/Model/Background.h"
#include "QuorvaneApp/Model/DependencyFilter.h"
#include "QuorvaneApp/Model/PreservedSettings.h"
#include "QuorvaneApp/Model/RecentProjects.h"
#include "QuorvaneApp/Model/ReportSaving.h"
#include "QuorvaneApp/Model/ScanRunner.h"
#include "QuorvaneApp/Model/ScannedProject.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QObject>
#include <QString>

class FileRevealer;
class FolderChooser;
struct FolderQuestion;

/// The one model behind the main window: the project folder and what its scan found, the filter, search and
/// selection, the report fields, and the state of scanning and exporting. Lives on the user-interface thread
/// and never waits there: scans and exports run in the background and come back as one finished value. Knows
/// no widget. Its end stops a running scan.
class AppModel : public QObject {
    Q_OBJECT

public:
    using SaveFunction = ::SaveFunction;

    /// What the model works with; all outlive it.
    struct Surroundings {
        FolderChooser& folderChooser;
        FileRevealer& fileRevealer;
        ScanFunction scan = scanFolder;
        SaveFunction save = ScanKit::saveReports;
    };

    /// With `persist`, `includeDev` and `preparedBy` are read from the user defaults now and written on every
    /// change.
    AppModel(bool persist, Surroundings surroundings, QObject* parent = nullptr);
    ~AppModel() override;

    bool persist() const { return settings_.persist(); }
    const std::optional<std::filesystem::path>& folder() const { return folder_; }
    /// Null before the first scan of the folder has ended.
    const ScanKit::Detection* detection() const { return project_ ? &project_->detection() : nullptr; }
    const ScanKit::ScanResult* result() const { return project_ ? &project_->result() : nullptr; }
    const std::shared_ptr<const ScannedProject>& project() const { return project_; }
    bool scanning() const { return scanning_; }
    const ScanningProgress& progress() const { return progress_; }
    const std::vector<std::filesystem::path>& extraCheckouts() const { return extraCheckouts_; }
    const std::vector<std::filesystem::path>& pythonEnvironments() const { return pythonEnvironments_; }
    const DependencyFilter& filter() const { return filter_; }
    const QString& search() const { return search_; }
    /// The id of the selected dependency.
    const std::optional<std::string>& selection() const { return selection_; }
    bool showExport() const { return showExport_; }
    bool exporting() const { return exporting_; }
    /// Meaningful while `exporting`.
    const SavingProgress& savingProgress() const { return savingProgress_; }
    /// The files that exports of this project have saved last; none before the first that went well.
    const std::vector<std::filesystem::path>& savedReports() const { return savedReports_; }
    /// Whether the last export could not save all of its reports; false before the first.
    bool exportFailed() const { return exportFailed_; }
    const std::optional<QString>& exportMessage() const { return exportMessage_; }
    /// A plain sentence about what could not be done, until it is dismissed or the next attempt.
    const std::optional<QString>& problem() const { return problem_; }
    /// The warnings of the last scan that were not put away.
    std::vector<const ScanKit::ScanWarning*> warnings() const;
    bool hasPutAwayWarnings() const;
    /// The projects scanned last, the newest first.
    const std::vector<RecentProject>& recentProjects() const { return recentProjects_.list(); }
    bool includeDev() const { return includeDev_; }
    const QString& preparedBy() const { return preparedBy_; }
    const QString& preparedFor() const { return preparedFor_; }
    const QString& reportName() const { return reportName_; }

    /// The table's rows, as positions in the result and in its order.
    const std::vector<int>& rows() const { return rows_; }
    /// The dependencies that reports and the summary hold; none without a result.
    std::vector<const ScanKit::Dependency*> reportRows() const;
    /// The project's ecosystems, or all while nothing was detected.
    std::vector<ScanKit::Ecosystem> ecosystems() const;
    /// Row of the result and dependency of the selection; none when nothing is selected.
    std::optional<int> selectedRow() const { return selectedRow_; }
    const ScanKit::Dependency* selectedDependency() const;
    /// The selected dependency as long as it is among the rows: what the filter or the search hides stays
    /// selected, but is not shown.
    const ScanKit::Dependency* shownDependency() const;
    ScanKit::ReportOptions reportOptions() const;

    /// Forgets the project before, with its choices, search and results, and scans this folder.
    void openFolder(const std::filesystem::path& folder);
    /// Opens what was dropped or named on the command line once the disk says that it is a readable folder;
    /// otherwise the present project stays and `problem` says why.
    void openIfFolder(const std::filesystem::path& path);
    void chooseProjectFolder();
    void addCheckoutsFolder();
    void choosePythonEnvironment();
    /// Takes back folders that were added, and scans without them. The same folder may be there twice.
    void removeCheckouts(std::size_t index);
    void removePythonEnvironments();
    /// Leaves the warning with this sentence out, also when another scan of the folder raises it again.
    void putAwayWarning(const std::string& sentence);
    void showPutAwayWarnings();
    void clearRecentProjects();
    /// Looks in the background which recent projects are missing; `recentProjectsChanged` tells of news.
    void lookUpRecentProjects();
    /// Scans the folder again; nothing without a folder. A scan that still runs is given up.
    void scan();
    /// Ends the running scan; what the last one found stays.
    void cancelScan();

    void setFilter(const DependencyFilter& filter);
    void setSearch(const QString& search);
    /// Selects a row of the result; none clears the selection.
    void selectRow(std::optional<int> row);
    void setIncludeDev(bool includeDev);
    void setPreparedBy(const QString& preparedBy);
    void setPreparedFor(const QString& preparedFor);
    void setReportName(const QString& reportName);
    void setShowExport(bool showExport);
    void setProblem(std::optional<QString> problem);
    void setExportMessage(std::optional<QString> message);

    /// Shows the selected package's folder in the file manager; nothing when it has none.
    void revealSelectedPackage();
    /// Shows the files that were saved last in the file manager.
    void revealSavedReports();
    /// Asks for a folder and saves these reports there, in the background. Nothing without a result.
    void exportReports(ScanKit::ReportFormats formats);

Q_SIGNALS:
    void projectChanged();   ///< folder, detection or result
    void scanningChanged();  ///< when a scan ends, after everything that it brought
    void progressChanged();
    void rowsChanged();  ///< also when the filter or the search changes
    void selectionChanged();
    void showExportChanged();
    void exportingChanged();
    void savingProgressChanged();
    void warningsChanged();
    void recentProjectsChanged();
    void exportMessageChanged();
    void problemChanged();
    void reportFieldsChanged();  ///< include dev, prepared by, prepared for, report name

private:
    template <typename Value, typename Other>
    void assign(Value& field, Other&& value, void (AppModel::*changed)());
    /// Asks for a folder, beginning in the project unless another start is given.
    void ask(FolderQuestion question, std::function<void(const std::filesystem::path&)> chosen);
    void updateRows();
    void takeProject(std::shared_ptr<const ScannedProject> project);
    void finishScan(const ScanOutcome& outcome);
    void restoreSelection();
    void save(ScanKit::ReportFormats formats, const std::filesystem::path& folder);
    void finishExport(const ScanKit::SavedReports& saved);

    Surroundings surroundings_;
    PreservedSettings settings_;
    std::optional<std::filesystem::path> folder_;
    std::shared_ptr<const ScannedProject> project_;
    bool scanning_ = false;
    ScanningProgress progress_;
    std::vector<std::filesystem::path> extraCheckouts_;
    std::vector<std::filesystem::path> pythonEnvironments_;
    DependencyFilter filter_ = DependencyFilter::all();
    QString search_;
    std::optional<std::string> selection_;
    std::optional<int> selectedRow_;
    std::vector<int> rows_;
    bool showExport_ = false;
    bool exporting_ = false;
    bool exportFailed_ = false;
    SavingProgress savingProgress_;
    std::vector<std::filesystem::path> savedReports_;
    RecentProjects recentProjects_;
    std::set<std::string> putAwayWarnings_;  ///< by their sentences
    std::optional<QString> exportMessage_;
    std::optional<QString> problem_;
    bool includeDev_;
    QString preparedBy_;
    QString preparedFor_;
    QString reportName_;
    Background background_;  ///< last, so that its work ends while the rest still lives
    ScanRunner scanRunner_;
};

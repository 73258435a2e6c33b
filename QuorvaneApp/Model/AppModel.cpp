#include "QuorvaneApp/Model/AppModel.h"

#include "QuorvaneApp/Model/ExportMessage.h"
#include "QuorvaneApp/Model/FolderProblem.h"
#include "QuorvaneApp/Model/FolderQuestions.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "ScanKit/Support/Paths.h"

#include <utility>

AppModel::AppModel(bool persist, Surroundings surroundings, QObject* parent)
    : QObject(parent),
      surroundings_(std::move(surroundings)),
      settings_(persist),
      includeDev_(settings_.includeDev()),
      preparedBy_(settings_.preparedBy()),
      scanRunner_(surroundings_.scan, background_) {}

AppModel::~AppModel() = default;

/// Tells of real changes alone, so that a view may write back what it was just told without an end.
template <typename Value, typename Other>
void AppModel::assign(Value& field, Other&& value, void (AppModel::*changed)()) {
    if (field == value) {
        return;
    }
    field = std::forward<Other>(value);
    Q_EMIT(this->*changed)();
}

std::vector<const ScanKit::Dependency*> AppModel::reportRows() const {
    return project_ ? project_->result().selected(includeDev_) : std::vector<const ScanKit::Dependency*>{};
}

std::vector<ScanKit::Ecosystem> AppModel::ecosystems() const {
    if (!project_) {
        return {ScanKit::allEcosystems.begin(), ScanKit::allEcosystems.end()};
    }
    const auto ecosystems = project_->detection().ecosystemsToRead(pythonEnvironments_);
    return {ecosystems.begin(), ecosystems.end()};
}

const ScanKit::Dependency* AppModel::selectedDependency() const {
    return selectedRow_ ? &project_->dependencies()[static_cast<std::size_t>(*selectedRow_)] : nullptr;
}

ScanKit::ReportOptions AppModel::reportOptions() const {
    return {
        .projectName = ScanKit::reportedProjectName(Texts::toUtf8(reportName_), folder_),
        .preparedFor = Texts::toUtf8(preparedFor_),
        .preparedBy = Texts::toUtf8(preparedBy_),
        .includeDev = includeDev_,
        .paper = ScanKit::paperOfEnvironment(),
    };
}

void AppModel::openFolder(const std::filesystem::path& folder) {
    folder_ = ScanKit::standardized(folder);
    // Gone before anything is told: no view may ask the new folder about the rows of the old one.
    project_.reset();
    extraCheckouts_.clear();
    pythonEnvironments_.clear();
    filter_ = DependencyFilter::all();
    search_.clear();
    reportName_ = Texts::shownName(*folder_);
    preparedFor_.clear();
    selectRow({});
    setExportMessage({});
    setProblem({});
    updateRows();
    Q_EMIT reportFieldsChanged();
    Q_EMIT projectChanged();
    scan();
}

/// Asked in the background, since a folder on a server that is away takes its time to answer.
void AppModel::openIfFolder(const std::filesystem::path& path) {
    background_.start([this, path](const ScanKit::StopToken&) {
        const std::optional<QString> problem = folderProblem(path);
        return [this, path, problem] {
            if (problem) {
                setProblem(problem);
            } else {
                openFolder(path);
            }
        };
    });
}

void AppModel::chooseProjectFolder() {
    surroundings_.folderChooser.choose(FolderQuestions::project(),
                                       [this](const std::filesystem::path& folder) { openFolder(folder); });
}

/// One more beside those before, while a chosen environment takes the place of the one before.
void AppModel::addCheckoutsFolder() {
    surroundings_.folderChooser.choose(FolderQuestions::checkouts(),
                                       [this](const std::filesystem::path& folder) {
                                           extraCheckouts_.push_back(folder);
                                           scan();
                                       });
}

void AppModel::choosePythonEnvironment() {
    surroundings_.folderChooser.choose(FolderQuestions::pythonEnvironment(),
                                       [this](const std::filesystem::path& folder) {
                                           pythonEnvironments_ = {folder};
                                           scan();
                                       });
}

void AppModel::scan() {
    if (!folder_) {
        return;
    }
    setProblem({});
    progress_ = {};
    Q_EMIT progressChanged();
    assign(scanning_, true, &AppModel::scanningChanged);
    scanRunner_.start(
        {.folder = *folder_, .extraCheckouts = extraCheckouts_, .pythonEnvironments = pythonEnvironments_},
        [this](const ScanningProgress& progress) {
            progress_ = progress;
            Q_EMIT progressChanged();
        },
        [this](const ScanOutcome& outcome) { finishScan(outcome); });
}

void AppModel::cancelScan() {
    scanRunner_.cancel();
    assign(scanning_, false, &AppModel::scanningChanged);
}

void AppModel::finishScan(const ScanOutcome& outcome) {
    assign(scanning_, false, &AppModel::scanningChanged);
    if (!outcome.project) {
        setProblem(outcome.problem);
        return;
    }
    project_ = outcome.project;
    restoreSelection();
    updateRows();
    Q_EMIT projectChanged();
    Q_EMIT selectionChanged();
}

/// By its id: another scan may find the same package at another row.
void AppModel::restoreSelection() {
    selectedRow_ = selection_ ? project_->rowOf(*selection_) : std::nullopt;
    if (!selectedRow_) {
        selection_.reset();
    }
}

void AppModel::updateRows() {
    rows_ = project_ ? project_->rows(filter_, DependencySearch(Texts::toUtf8(search_))) : std::vector<int>{};
    Q_EMIT rowsChanged();
}

void AppModel::setFilter(const DependencyFilter& filter) {
    if (filter_ != filter) {
        filter_ = filter;
        updateRows();
    }
}

void AppModel::setSearch(const QString& search) {
    if (search_ != search) {
        search_ = search;
        updateRows();
    }
}

void AppModel::selectRow(std::optional<int> row) {
    if (selectedRow_ == row) {
        return;
    }
    selectedRow_ = row;
    selection_ = row ? std::optional(selectedDependency()->id()) : std::nullopt;
    Q_EMIT selectionChanged();
}

void AppModel::setIncludeDev(bool includeDev) {
    if (includeDev_ != includeDev) {
        settings_.saveIncludeDev(includeDev);
        assign(includeDev_, includeDev, &AppModel::reportFieldsChanged);
    }
}

void AppModel::setPreparedBy(const QString& preparedBy) {
    if (preparedBy_ != preparedBy) {
        settings_.savePreparedBy(preparedBy);
        assign(preparedBy_, preparedBy, &AppModel::reportFieldsChanged);
    }
}

void AppModel::setPreparedFor(const QString& preparedFor) {
    assign(preparedFor_, preparedFor, &AppModel::reportFieldsChanged);
}

void AppModel::setReportName(const QString& reportName) {
    assign(reportName_, reportName, &AppModel::reportFieldsChanged);
}

void AppModel::setShowExport(bool showExport) {
    assign(showExport_, showExport && project_ != nullptr, &AppModel::showExportChanged);
}

void AppModel::setProblem(std::optional<QString> problem) {
    assign(problem_, std::move(problem), &AppModel::problemChanged);
}

void AppModel::setExportMessage(std::optional<QString> message) {
    assign(exportMessage_, std::move(message), &AppModel::exportMessageChanged);
}

void AppModel::exportReports(ScanKit::ReportFormats formats) {
    if (!project_ || exporting_) {
        return;
    }
    surroundings_.folderChooser.choose(
        FolderQuestions::exportDestination(),
        [this, formats](const std::filesystem::path& folder) { save(formats, folder); });
}

/// The folder panel stays open as long as the user likes, so what was true when it opened is asked again.
void AppModel::save(ScanKit::ReportFormats formats, const std::filesystem::path& folder) {
    if (!project_ || exporting_) {
        return;
    }
    assign(exporting_, true, &AppModel::exportingChanged);
    background_.start([this, formats, folder, project = project_, options = reportOptions(),
                       saveReports = surroundings_.save](const ScanKit::StopToken&) {
        const ScanKit::SavedReports saved = saveReports(project->result(), options, formats, folder);
        return [this, saved] { finishExport(saved); };
    });
}

void AppModel::finishExport(const ScanKit::SavedReports& saved) {
    // The outcome comes before `exportingChanged`: a window that waits for it to close looks whether it may.
    exportFailed_ = saved.failure.has_value();
    setExportMessage(exportMessageFor(saved));
    assign(exporting_, false, &AppModel::exportingChanged);
    if (!saved.failure) {
        surroundings_.fileRevealer.reveal(saved.files);
    }
}

#include "QuorvaneApp/Model/AppModel.h"

#include "QuorvaneApp/Model/ExportMessage.h"
#include "QuorvaneApp/Model/FolderProblem.h"
#include "QuorvaneApp/Model/FolderQuestions.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <utility>

AppModel::AppModel(bool persist, Surroundings surroundings, QObject* parent)
    : QObject(parent),
      surroundings_(std::move(surroundings)),
      settings_(persist),
      recentProjects_(persist),
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

const ScanKit::Dependency* AppModel::shownDependency() const {
    const bool isShown = selectedRow_ && std::ranges::binary_search(rows_, *selectedRow_);
    return isShown ? selectedDependency() : nullptr;
}

std::vector<const ScanKit::ScanWarning*> AppModel::warnings() const {
    std::vector<const ScanKit::ScanWarning*> shown;
    if (project_) {
        for (const ScanKit::ScanWarning& warning : project_->result().warnings) {
            if (!putAwayWarnings_.contains(warning.sentence)) {
                shown.push_back(&warning);
            }
        }
    }
    return shown;
}

bool AppModel::hasPutAwayWarnings() const {
    return project_ && warnings().size() < project_->result().warnings.size();
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
    savedReports_.clear();
    putAwayWarnings_.clear();
    reportName_ = Texts::shownName(*folder_);
    preparedFor_.clear();
    selectRow({});
    setExportMessage({});
    setProblem({});
    updateRows();
    Q_EMIT reportFieldsChanged();
    Q_EMIT projectChanged();
    Q_EMIT warningsChanged();
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
    FolderQuestion question = FolderQuestions::project();
    if (!folder_ && !recentProjects().empty()) {
        question.start = recentProjects().front().folder.parent_path();
    }
    ask(std::move(question), [this](const std::filesystem::path& folder) { openFolder(folder); });
}

void AppModel::ask(FolderQuestion question, std::function<void(const std::filesystem::path&)> chosen) {
    if (!question.start) {
        question.start = folder_;
    }
    surroundings_.folderChooser.choose(question, std::move(chosen));
}

/// One more beside those before, while a chosen environment takes the place of the one before.
void AppModel::addCheckoutsFolder() {
    ask(FolderQuestions::checkouts(), [this](const std::filesystem::path& folder) {
        extraCheckouts_.push_back(folder);
        scan();
    });
}

void AppModel::choosePythonEnvironment() {
    ask(FolderQuestions::pythonEnvironment(), [this](const std::filesystem::path& folder) {
        pythonEnvironments_ = {folder};
        scan();
    });
}

void AppModel::removeCheckouts(std::size_t index) {
    extraCheckouts_.erase(extraCheckouts_.begin() + static_cast<std::ptrdiff_t>(index));
    scan();
}

void AppModel::removePythonEnvironments() {
    pythonEnvironments_.clear();
    scan();
}

void AppModel::putAwayWarning(const std::string& sentence) {
    putAwayWarnings_.insert(sentence);
    Q_EMIT warningsChanged();
}

void AppModel::showPutAwayWarnings() {
    putAwayWarnings_.clear();
    Q_EMIT warningsChanged();
}

void AppModel::clearRecentProjects() {
    recentProjects_.clear();
    Q_EMIT recentProjectsChanged();
}

void AppModel::lookUpRecentProjects() {
    background_.start([this, projects = recentProjects()](const ScanKit::StopToken&) {
        return [this, looked = lookedUp(projects)] {
            if (recentProjects_.mark(looked)) {
                Q_EMIT recentProjectsChanged();
            }
        };
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
    if (outcome.project) {
        takeProject(outcome.project);
    } else {
        setProblem(outcome.problem);
    }
    // Last: whoever looks on hearing it finds what the scan brought.
    assign(scanning_, false, &AppModel::scanningChanged);
}

void AppModel::takeProject(std::shared_ptr<const ScannedProject> project) {
    project_ = std::move(project);
    // An ecosystem that is gone has no place in the sidebar where its filter could be left.
    const std::vector<ScanKit::Ecosystem> present = ecosystems();
    if (filter_.ecosystem() && std::ranges::find(present, *filter_.ecosystem()) == present.end()) {
        filter_ = DependencyFilter::all();
    }
    restoreSelection();
    updateRows();
    Q_EMIT projectChanged();
    Q_EMIT warningsChanged();
    Q_EMIT selectionChanged();
    recentProjects_.add(*folder_);
    Q_EMIT recentProjectsChanged();
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
    FolderQuestion question = FolderQuestions::exportDestination();
    if (!savedReports_.empty()) {
        question.start = savedReports_.front().parent_path();
    }
    ask(std::move(question), [this, formats](const std::filesystem::path& folder) { save(formats, folder); });
}

void AppModel::revealSelectedPackage() {
    if (selectedDependency() != nullptr && selectedDependency()->folder) {
        surroundings_.fileRevealer.reveal({*selectedDependency()->folder});
    }
}

void AppModel::revealSavedReports() {
    surroundings_.fileRevealer.reveal(savedReports_);
}

/// The folder panel stays open as long as the user likes, so what was true when it opened is asked again.
void AppModel::save(ScanKit::ReportFormats formats, const std::filesystem::path& folder) {
    if (!project_ || exporting_) {
        return;
    }
    setExportMessage({});
    savingProgress_ = {};
    assign(exporting_, true, &AppModel::exportingChanged);
    const auto tell = [this](const SavingProgress& progress) {
        background_.post(
            [this, progress] { assign(savingProgress_, progress, &AppModel::savingProgressChanged); });
    };
    background_.start([this, tell, formats, folder, project = project_, options = reportOptions(),
                       saveReports = surroundings_.save](const ScanKit::StopToken&) {
        const ScanKit::SavedReports saved =
            saveOneByOne(saveReports, project->result(), options, formats, folder, tell);
        return [this, saved] { finishExport(saved); };
    });
}

void AppModel::finishExport(const ScanKit::SavedReports& saved) {
    // The outcome comes before `exportingChanged`: a window that waits for it to close looks whether it may.
    exportFailed_ = saved.failure.has_value();
    if (!saved.files.empty()) {
        savedReports_ = saved.files;
    }
    setExportMessage(exportMessageFor(saved));
    assign(exporting_, false, &AppModel::exportingChanged);
    if (!saved.failure) {
        surroundings_.fileRevealer.reveal(saved.files);
    }
}

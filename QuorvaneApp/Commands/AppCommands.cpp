#include "QuorvaneApp/Commands/AppCommands.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/WebLink.h"
#include "ScanKit/Model/EnumerationTable.h"

#include <utility>

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QKeySequence>

namespace {

struct CommandRow {
    Command value;
    const char* objectName;
    const char* text;
    const char* keys;  ///< "Ctrl" is the Command key on a Mac
    QAction::MenuRole role = QAction::NoRole;
};

// clang-format off
constexpr auto commandRows = std::to_array<CommandRow>({
    {Command::openFolder, "openFolder", "Open Project Folder…", "Ctrl+O"},
    {Command::rescan, "rescan", "Rescan", "Ctrl+R"},
    {Command::cancelScan, "cancelScan", "Cancel Scan", "Ctrl+."},
    {Command::addCheckouts, "addCheckouts", "Add Checkouts Folder…", ""},
    {Command::choosePythonEnvironment, "choosePythonEnvironment", "Choose Python Environment…", ""},
    {Command::exportReport, "exportReport", "Export Report…", "Ctrl+E"},
    {Command::showReports, "showReports", "Show Reports", ""},
    {Command::openSource, "openSource", "Open Source Page", ""},
    {Command::revealPackage, "revealPackage", "Show in File Manager", ""},
    {Command::find, "find", "Find", "Ctrl+F"},
    {Command::findInText, "findInText", "Find in License Text", "Ctrl+Shift+F"},
    {Command::showAll, "showAll", "All Packages", "Ctrl+1"},
    {Command::showNeedsReview, "showNeedsReview", "Needs Review", "Ctrl+2"},
    {Command::showCopyleft, "showCopyleft", "Copyleft", "Ctrl+3"},
    {Command::showUnknown, "showUnknown", "Unknown", "Ctrl+4"},
    {Command::showDevOnly, "showDevOnly", "Dev-only Packages", "Ctrl+5"},
    {Command::sortByResultOrder, "sortByResultOrder", "Original Order", "Ctrl+0"},
    {Command::sortByPackage, "sortByPackage", "Package", ""},
    {Command::sortByVersion, "sortByVersion", "Version", ""},
    {Command::sortByEcosystem, "sortByEcosystem", "Ecosystem", ""},
    {Command::sortByLicense, "sortByLicense", "License", ""},
    {Command::sortByFoundBy, "sortByFoundBy", "Found by", ""},
    {Command::sortByFlag, "sortByFlag", "Flag", ""},
    {Command::fitColumns, "fitColumns", "Fit Columns", ""},
    {Command::showSources, "showSources", "What Was Read", "Ctrl+I"},
    {Command::showWarnings, "showWarnings", "Show Warnings", ""},
    {Command::toggleSidebar, "toggleSidebar", "Sidebar", "F9"},
    {Command::toggleDetails, "toggleDetails", "Details", "Shift+F9"},
    {Command::toggleFullScreen, "toggleFullScreen", "Full Screen", "F11"},
    {Command::minimize, "minimize", "Minimize", "Ctrl+M"},
    {Command::settings, "settings", "Settings…", "Ctrl+,", QAction::PreferencesRole},
    {Command::checkForUpdates, "checkForUpdates", "Check for Updates…", "", QAction::ApplicationSpecificRole},
    {Command::about, "about", "About Quorvane", "", QAction::AboutRole},
    {Command::quit, "quit", "Quit", "Ctrl+Q", QAction::QuitRole},
});
// clang-format on
static_assert(ScanKit::hasRowForEachEnumerator(commandRows), "each enumerator needs its row here");

struct FilterRow {
    Command command;
    DependencyFilter filter;
};

std::array<FilterRow, 5> filterRows() {
    return {{
        {Command::showAll, DependencyFilter::all()},
        {Command::showNeedsReview, DependencyFilter::needsReview()},
        {Command::showCopyleft, DependencyFilter::copyleft()},
        {Command::showUnknown, DependencyFilter::unknown()},
        {Command::showDevOnly, DependencyFilter::devOnly()},
    }};
}

}  // namespace

AppCommands::AppCommands(AppModel& model, std::function<void()> checkForUpdates, QObject* parent)
    : QObject(parent), model_(&model) {
    for (const CommandRow& row : commandRows) {
        auto* const made = new QAction(QString::fromUtf8(row.text), this);
        made->setObjectName(QLatin1StringView(row.objectName));
        made->setShortcut(QKeySequence::fromString(QLatin1StringView(row.keys)));
        made->setMenuRole(row.role);
        actions_[static_cast<std::size_t>(row.value)] = made;
    }
    for (const Command command :
         {Command::toggleSidebar, Command::toggleDetails, Command::toggleFullScreen}) {
        action(command)->setCheckable(true);
    }
    // Shown even where it can do nothing, so that its place in the menu is the same in every build.
    action(Command::checkForUpdates)->setEnabled(static_cast<bool>(checkForUpdates));
    if (checkForUpdates) {
        connect(action(Command::checkForUpdates), &QAction::triggered, this, std::move(checkForUpdates));
    }
    connect(action(Command::quit), &QAction::triggered, qApp, &QCoreApplication::quit);
    connectToModel();
    connectFilters();
    refresh();
}

void AppCommands::connectToModel() {
    const auto on = [this](Command command, void (AppModel::*operation)()) {
        connect(action(command), &QAction::triggered, model_, operation);
    };
    on(Command::openFolder, &AppModel::chooseProjectFolder);
    on(Command::rescan, &AppModel::scan);
    on(Command::cancelScan, &AppModel::cancelScan);
    on(Command::addCheckouts, &AppModel::addCheckoutsFolder);
    on(Command::choosePythonEnvironment, &AppModel::choosePythonEnvironment);
    on(Command::showReports, &AppModel::revealSavedReports);
    on(Command::revealPackage, &AppModel::revealSelectedPackage);
    on(Command::showWarnings, &AppModel::showPutAwayWarnings);
    connect(action(Command::exportReport), &QAction::triggered, model_,
            [this] { model_->setShowExport(true); });
    connect(model_, &AppModel::projectChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::scanningChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::exportingChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::selectionChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::rowsChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::warningsChanged, this, &AppCommands::refresh);
}

void AppCommands::connectFilters() {
    auto* const group = new QActionGroup(this);
    // None is checked while the sidebar shows one ecosystem, which has no command.
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const FilterRow& row : filterRows()) {
        QAction* const show = action(row.command);
        show->setCheckable(true);
        group->addAction(show);
        connect(show, &QAction::triggered, model_,
                [this, filter = row.filter] { model_->setFilter(filter); });
        const auto follow = [this, show, filter = row.filter] {
            show->setChecked(model_->filter() == filter);
        };
        connect(model_, &AppModel::rowsChanged, show, follow);
        // Choosing the checked one would uncheck it, and the filter stays.
        connect(show, &QAction::triggered, show, follow);
        follow();
    }
}

void AppCommands::refresh() {
    const bool hasFolder = model_->folder().has_value();
    const bool hasResult = model_->result() != nullptr;
    for (const Command command : {Command::rescan, Command::addCheckouts, Command::choosePythonEnvironment,
                                  Command::toggleSidebar, Command::toggleDetails}) {
        action(command)->setEnabled(hasFolder);
    }
    for (const Command command :
         {Command::find, Command::showAll, Command::showNeedsReview, Command::showCopyleft,
          Command::showUnknown, Command::showDevOnly, Command::sortByResultOrder, Command::sortByPackage,
          Command::sortByVersion, Command::sortByEcosystem, Command::sortByLicense, Command::sortByFoundBy,
          Command::sortByFlag, Command::fitColumns, Command::showSources}) {
        action(command)->setEnabled(hasResult);
    }
    const ScanKit::Dependency* const shown = model_->shownDependency();
    action(Command::openSource)->setEnabled(shown != nullptr && webLink(shown->source));
    action(Command::revealPackage)->setEnabled(shown != nullptr && shown->folder);
    action(Command::findInText)->setEnabled(shown != nullptr && shown->licenseText);
    action(Command::showReports)->setEnabled(!model_->savedReports().empty());
    action(Command::showWarnings)->setEnabled(model_->hasPutAwayWarnings());
    action(Command::cancelScan)->setEnabled(model_->scanning());
    action(Command::exportReport)->setEnabled(hasResult && !model_->exporting());
}

#include "QuorvaneApp/Commands/AppCommands.h"

#include "QuorvaneApp/Model/AppModel.h"
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
    {Command::openFolder, "openFolder", QT_TRANSLATE_NOOP("AppCommands", "Open Project Folder…"), "Ctrl+O"},
    {Command::rescan, "rescan", QT_TRANSLATE_NOOP("AppCommands", "Rescan"), "Ctrl+R"},
    {Command::cancelScan, "cancelScan", QT_TRANSLATE_NOOP("AppCommands", "Cancel Scan"), "Ctrl+."},
    {Command::addCheckouts, "addCheckouts", QT_TRANSLATE_NOOP("AppCommands", "Add Checkouts Folder…"), ""},
    {Command::choosePythonEnvironment, "choosePythonEnvironment", QT_TRANSLATE_NOOP("AppCommands", "Choose Python Environment…"), ""},
    {Command::exportReport, "exportReport", QT_TRANSLATE_NOOP("AppCommands", "Export Report…"), "Ctrl+E"},
    {Command::find, "find", QT_TRANSLATE_NOOP("AppCommands", "Find"), "Ctrl+F"},
    {Command::showAll, "showAll", QT_TRANSLATE_NOOP("AppCommands", "All Packages"), "Ctrl+1"},
    {Command::showNeedsReview, "showNeedsReview", QT_TRANSLATE_NOOP("AppCommands", "Needs Review"), "Ctrl+2"},
    {Command::showCopyleft, "showCopyleft", QT_TRANSLATE_NOOP("AppCommands", "Copyleft"), "Ctrl+3"},
    {Command::showUnknown, "showUnknown", QT_TRANSLATE_NOOP("AppCommands", "Unknown"), "Ctrl+4"},
    {Command::sortByResultOrder, "sortByResultOrder", QT_TRANSLATE_NOOP("AppCommands", "Original Order"), "Ctrl+0"},
    {Command::toggleSidebar, "toggleSidebar", QT_TRANSLATE_NOOP("AppCommands", "Sidebar"), "F9"},
    {Command::toggleDetails, "toggleDetails", QT_TRANSLATE_NOOP("AppCommands", "Details"), "Shift+F9"},
    {Command::toggleFullScreen, "toggleFullScreen", QT_TRANSLATE_NOOP("AppCommands", "Full Screen"), "F11"},
    {Command::minimize, "minimize", QT_TRANSLATE_NOOP("AppCommands", "Minimize"), "Ctrl+M"},
    {Command::settings, "settings", QT_TRANSLATE_NOOP("AppCommands", "Settings…"), "Ctrl+,", QAction::PreferencesRole},
    {Command::checkForUpdates, "checkForUpdates", QT_TRANSLATE_NOOP("AppCommands", "Check for Updates…"), "", QAction::ApplicationSpecificRole},
    {Command::about, "about", QT_TRANSLATE_NOOP("AppCommands", "About Quorvane"), "", QAction::AboutRole},
    {Command::quit, "quit", QT_TRANSLATE_NOOP("AppCommands", "Quit"), "Ctrl+Q", QAction::QuitRole},
});
// clang-format on
static_assert(ScanKit::hasRowForEachEnumerator(commandRows), "each enumerator needs its row here");

struct FilterRow {
    Command command;
    DependencyFilter filter;
};

std::array<FilterRow, 4> filterRows() {
    return {{
        {Command::showAll, DependencyFilter::all()},
        {Command::showNeedsReview, DependencyFilter::needsReview()},
        {Command::showCopyleft, DependencyFilter::copyleft()},
        {Command::showUnknown, DependencyFilter::unknown()},
    }};
}

}  // namespace

AppCommands::AppCommands(AppModel& model, std::function<void()> checkForUpdates, QObject* parent)
    : QObject(parent), model_(&model) {
    for (const CommandRow& row : commandRows) {
        auto* const made = new QAction(tr(row.text), this);
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
    connect(action(Command::exportReport), &QAction::triggered, model_,
            [this] { model_->setShowExport(true); });
    connect(model_, &AppModel::projectChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::scanningChanged, this, &AppCommands::refresh);
    connect(model_, &AppModel::exportingChanged, this, &AppCommands::refresh);
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
    for (const Command command : {Command::find, Command::showAll, Command::showNeedsReview,
                                  Command::showCopyleft, Command::showUnknown, Command::sortByResultOrder}) {
        action(command)->setEnabled(hasResult);
    }
    action(Command::cancelScan)->setEnabled(model_->scanning());
    action(Command::exportReport)->setEnabled(hasResult && !model_->exporting());
}

#pragma once

#include "ScanKit/Model/EnumerationTable.h"

#include <array>
#include <functional>

#include <QObject>

class AppModel;
class QAction;

/// The commands of the program, apart from those of every program's Edit menu.
enum class Command {
    openFolder,
    rescan,
    cancelScan,
    addCheckouts,
    choosePythonEnvironment,
    exportReport,
    showReports,
    openSource,
    revealPackage,
    find,
    findInText,
    showAll,
    showNeedsReview,
    showCopyleft,
    showUnknown,
    showDevOnly,
    sortByResultOrder,
    sortByPackage,
    sortByVersion,
    sortByEcosystem,
    sortByLicense,
    sortByFoundBy,
    sortByFlag,
    fitColumns,
    showSources,
    showWarnings,
    toggleSidebar,
    toggleDetails,
    toggleFullScreen,
    minimize,
    settings,
    checkForUpdates,
    about,
    quit,
};

/// One action for each command, shared by menu, button and shortcut. Those that concern the model alone are
/// carried out here, and enabled as its state allows; the window connects the others.
class AppCommands : public QObject {
    Q_OBJECT

public:
    /// `checkForUpdates` is what the command of that name does; without one the command is disabled.
    explicit AppCommands(AppModel& model, std::function<void()> checkForUpdates = {},
                         QObject* parent = nullptr);

    QAction* action(Command command) const { return actions_[static_cast<std::size_t>(command)]; }

private:
    void connectToModel();
    void connectFilters();
    void refresh();

    AppModel* model_;
    std::array<QAction*, ScanKit::enumeratorCount<Command>()> actions_{};
};

#include "QuorvaneApp/Commands/MainMenu.h"

#include "MenuKit/EditActions.h"
#include "MenuKit/MenuBaseline.h"
#include "MenuKit/Mnemonics.h"
#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Commands/RecentMenu.h"

#include <initializer_list>

#include <QMenu>
#include <QMenuBar>

namespace {

QMenu& addMenu(QMenuBar& bar, const char* title) {
    return *bar.addMenu(QString::fromUtf8(title));
}

/// Adds the commands in a group of their own.
void addGroup(QMenu& menu, const AppCommands& commands, std::initializer_list<Command> group) {
    if (!menu.isEmpty()) {
        menu.addSeparator();
    }
    for (const Command command : group) {
        menu.addAction(commands.action(command));
    }
}

}  // namespace

void fillMainMenu(QMenuBar& bar, AppModel& model, const AppCommands& commands, EditActions& edit,
                  const MenuBaseline& baseline) {
    QMenu& file = addMenu(bar, "&File");
    addGroup(file, commands, {Command::openFolder});
    file.addMenu(new RecentMenu(model, &file));
    addGroup(file, commands, {Command::rescan, Command::cancelScan});
    addGroup(file, commands, {Command::addCheckouts, Command::choosePythonEnvironment});
    addGroup(file, commands, {Command::exportReport, Command::showReports});
    addGroup(file, commands, {Command::openSource, Command::revealPackage});
    file.addSeparator();
    baseline.addCloseTo(file);
    addGroup(file, commands, {Command::quit});

    QMenu& editMenu = addMenu(bar, "&Edit");
    edit.addTo(editMenu);
    for (const Command command : {Command::find, Command::findInText}) {
        editMenu.addAction(commands.action(command));
    }
    addGroup(editMenu, commands, {Command::settings});

    QMenu& view = addMenu(bar, "&View");
    addGroup(view, commands,
             {Command::showAll, Command::showNeedsReview, Command::showCopyleft, Command::showUnknown,
              Command::showDevOnly});
    view.addSeparator();
    QMenu& sorting = *view.addMenu(QStringLiteral("Sort By"));
    addGroup(sorting, commands, {Command::sortByResultOrder});
    addGroup(sorting, commands,
             {Command::sortByPackage, Command::sortByVersion, Command::sortByEcosystem,
              Command::sortByLicense, Command::sortByFoundBy, Command::sortByFlag});
    view.addAction(commands.action(Command::fitColumns));
    addGroup(view, commands, {Command::showSources, Command::showWarnings});
    addGroup(view, commands, {Command::toggleSidebar, Command::toggleDetails, Command::toggleFullScreen});

    // Where the menus stand at the top of the screen, people look for a menu of windows. Elsewhere the window's
    // frame does what it would.
    QMenu& window = bar.isNativeMenuBar() ? addMenu(bar, "&Window") : view;
    window.addAction(commands.action(Command::minimize));

    QMenu& help = addMenu(bar, "&Help");
    baseline.addHelpTo(help);
    addGroup(help, commands, {Command::about});
    if (!bar.isNativeMenuBar()) {
        Mnemonics::give(bar);
    }
}

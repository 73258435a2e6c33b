#include "QuorvaneApp/Commands/MainMenu.h"

#include "MenuKit/EditActions.h"
#include "MenuKit/MenuBaseline.h"
#include "QuorvaneApp/Commands/AppCommands.h"

#include <initializer_list>

#include <QCoreApplication>
#include <QMenu>
#include <QMenuBar>

namespace {

QMenu& addMenu(QMenuBar& bar, const char* title) {
    return *bar.addMenu(QCoreApplication::translate("MainMenu", title));
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

void fillMainMenu(QMenuBar& bar, const AppCommands& commands, EditActions& edit,
                  const MenuBaseline& baseline) {
    QMenu& file = addMenu(bar, QT_TRANSLATE_NOOP("MainMenu", "&File"));
    addGroup(file, commands, {Command::openFolder, Command::rescan, Command::cancelScan});
    addGroup(file, commands, {Command::addCheckouts, Command::choosePythonEnvironment});
    addGroup(file, commands, {Command::exportReport});
    file.addSeparator();
    baseline.addCloseTo(file);
    addGroup(file, commands, {Command::quit});

    QMenu& editMenu = addMenu(bar, QT_TRANSLATE_NOOP("MainMenu", "&Edit"));
    edit.addTo(editMenu);
    editMenu.addAction(commands.action(Command::find));
    addGroup(editMenu, commands, {Command::settings});

    QMenu& view = addMenu(bar, QT_TRANSLATE_NOOP("MainMenu", "&View"));
    addGroup(view, commands,
             {Command::showAll, Command::showNeedsReview, Command::showCopyleft, Command::showUnknown});
    addGroup(view, commands, {Command::sortByResultOrder});
    addGroup(view, commands, {Command::toggleSidebar, Command::toggleDetails, Command::toggleFullScreen});

    QMenu& window = addMenu(bar, QT_TRANSLATE_NOOP("MainMenu", "&Window"));
    addGroup(window, commands, {Command::minimize});

    QMenu& help = addMenu(bar, QT_TRANSLATE_NOOP("MainMenu", "&Help"));
    baseline.addHelpTo(help);
    addGroup(help, commands, {Command::about});
}

#pragma once

#include "MenuKit/CloseWindowAction.h"

#include <functional>
#include <vector>

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;

/// The help item of a program.
struct MenuHelp {
    QString appName;               ///< shown in the item: "Example Help"
    QKeySequence shortcut;         ///< empty when the item has none
    std::function<void()> action;  ///< what the item does
};

/// What every window's menus hold, whatever the program does.
struct MenuBaseline {
    CloseWindowAction close;
    MenuHelp help;
    std::vector<QAction*> helpItems;  ///< further help entries, below the help item

    /// Adds "Close Window", which works in every window of the program. The menu owns the action.
    QAction* addCloseTo(QMenu& menu) const;
    /// Adds the help item and the further entries; the item that it adds belongs to the menu.
    QAction* addHelpTo(QMenu& menu) const;
};

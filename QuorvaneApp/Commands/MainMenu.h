#pragma once

class AppCommands;
class AppModel;
class EditActions;
class QMenuBar;
struct MenuBaseline;

/// Fills the menu bar with the program's commands and those of every program.
void fillMainMenu(QMenuBar& bar, AppModel& model, const AppCommands& commands, EditActions& edit,
                  const MenuBaseline& baseline);

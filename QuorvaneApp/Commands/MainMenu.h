#pragma once

class AppCommands;
class EditActions;
class QMenuBar;
struct MenuBaseline;

/// Fills the menu bar with the program's commands and those of every program.
void fillMainMenu(QMenuBar& bar, const AppCommands& commands, EditActions& edit,
                  const MenuBaseline& baseline);

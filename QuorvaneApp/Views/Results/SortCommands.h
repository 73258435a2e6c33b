#pragma once

class AppCommands;
class DependencyTable;

/// Lets the commands sort the table, and marks the one by which it is sorted, however that came about.
void connectSorting(const AppCommands& commands, DependencyTable& table);

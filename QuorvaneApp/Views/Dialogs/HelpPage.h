#pragma once

#include <QString>

/// The built-in help: what the program does, and what the categories, flags and the words under "Found by"
/// mean. As HTML for a text view.
QString helpPage();

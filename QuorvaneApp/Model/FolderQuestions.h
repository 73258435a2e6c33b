#pragma once

#include "QuorvaneApp/Platform/FolderChooser.h"

/// The questions for folders that the program asks.
namespace FolderQuestions {

FolderQuestion project();
FolderQuestion checkouts();
/// Shows hidden folders: environments are mostly called ".venv".
FolderQuestion pythonEnvironment();
/// Lets the user make a new folder; the others are for folders that are there.
FolderQuestion exportDestination();

}  // namespace FolderQuestions

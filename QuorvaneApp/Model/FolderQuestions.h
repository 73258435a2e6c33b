#pragma once

#include "QuorvaneApp/Platform/FolderChooser.h"

#include <QCoreApplication>

/// The questions for folders that the program asks.
namespace FolderQuestions {

inline FolderQuestion project() {
    return {.message = QCoreApplication::translate("FolderQuestions",
                                                   "Choose a project folder. Quorvane only reads it."),
            .prompt = QCoreApplication::translate("FolderQuestions", "Scan")};
}

inline FolderQuestion checkouts() {
    return {.message = QCoreApplication::translate(
                "FolderQuestions",
                "Choose a folder of checked-out Swift packages, like …/SourcePackages/checkouts or "
                ".build/checkouts."),
            .prompt = QCoreApplication::translate("FolderQuestions", "Add")};
}

inline FolderQuestion pythonEnvironment() {
    return {.message = QCoreApplication::translate("FolderQuestions",
                                                   "Choose the virtual environment (the folder with "
                                                   "pyvenv.cfg) or a site-packages folder."),
            .prompt = QCoreApplication::translate("FolderQuestions", "Use"),
            .showsHidden = true};
}

inline FolderQuestion exportDestination() {
    return {
        .message = QCoreApplication::translate("FolderQuestions", "Choose where to save the report files."),
        .prompt = QCoreApplication::translate("FolderQuestions", "Export Here"),
        .createsFolders = true};
}

}  // namespace FolderQuestions

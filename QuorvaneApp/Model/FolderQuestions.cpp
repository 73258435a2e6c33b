#include "QuorvaneApp/Model/FolderQuestions.h"

#include <QCoreApplication>

namespace FolderQuestions {
namespace {

QString translated(const char* text) {
    return QCoreApplication::translate("FolderQuestions", text);
}

}  // namespace

FolderQuestion project() {
    return {.message = translated("Choose a project folder. Quorvane only reads it."),
            .prompt = translated("Scan")};
}

FolderQuestion checkouts() {
    return {
        .message = translated(
            "Choose a folder of checked-out Swift packages, like …/SourcePackages/checkouts or .build/checkouts."),
        .prompt = translated("Add")};
}

FolderQuestion pythonEnvironment() {
    return {.message = translated(
                "Choose the virtual environment (the folder with pyvenv.cfg) or a site-packages folder."),
            .prompt = translated("Use"),
            .showsHidden = true};
}

FolderQuestion exportDestination() {
    return {.message = translated("Choose where to save the report files."),
            .prompt = translated("Export Here"),
            .createsFolders = true};
}

}  // namespace FolderQuestions

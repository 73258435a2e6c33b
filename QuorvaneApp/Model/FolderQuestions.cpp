#include "QuorvaneApp/Model/FolderQuestions.h"

namespace FolderQuestions {

FolderQuestion project() {
    return {.message = QStringLiteral("Choose a project folder. Quorvane only reads it."),
            .prompt = QStringLiteral("Scan")};
}

FolderQuestion checkouts() {
    return {
        .message = QStringLiteral(
            "Choose a folder of checked-out Swift packages, like …/SourcePackages/checkouts or .build/checkouts."),
        .prompt = QStringLiteral("Add")};
}

FolderQuestion pythonEnvironment() {
    return {.message = QStringLiteral(
                "Choose the virtual environment (the folder with pyvenv.cfg) or a site-packages folder."),
            .prompt = QStringLiteral("Use"),
            .showsHidden = true};
}

FolderQuestion exportDestination() {
    return {.message = QStringLiteral("Choose where to save the report files."),
            .prompt = QStringLiteral("Export Here"),
            .createsFolders = true};
}

}  // namespace FolderQuestions

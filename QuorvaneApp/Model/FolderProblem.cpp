#include "QuorvaneApp/Model/FolderProblem.h"

#include "QuorvaneApp/Model/Texts.h"

#include <system_error>

#include <QCoreApplication>

namespace {

QString reasonOf(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory) {
        return QCoreApplication::translate("FolderProblem", "It may have been moved, renamed or deleted.");
    }
    if (error == std::errc::permission_denied) {
        return QCoreApplication::translate("FolderProblem", "You do not have permission to read it.");
    }
    return Texts::fromUtf8(error.message());
}

}  // namespace

std::optional<QString> folderProblem(const std::filesystem::path& folder) {
    // Opening it is the one sure question: modes, access lists and servers each have their own say.
    std::error_code error;
    std::filesystem::directory_iterator(folder, error);
    if (!error) {
        return std::nullopt;
    }
    if (error == std::errc::not_a_directory) {
        return QCoreApplication::translate("FolderProblem",
                                           "“%1” is not a folder. Quorvane scans one project folder.")
            .arg(Texts::shownName(folder));
    }
    return QCoreApplication::translate("FolderProblem", "“%1” can’t be read. %2")
        .arg(Texts::shownName(folder), reasonOf(error));
}

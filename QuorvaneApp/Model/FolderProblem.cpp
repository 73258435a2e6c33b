#include "QuorvaneApp/Model/FolderProblem.h"

#include "QuorvaneApp/Model/Texts.h"

#include <system_error>

namespace {

QString reasonOf(const std::error_code& error) {
    if (error == std::errc::no_such_file_or_directory) {
        return QStringLiteral("It may have been moved, renamed or deleted.");
    }
    if (error == std::errc::permission_denied) {
        return QStringLiteral("You do not have permission to read it.");
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
        return QStringLiteral("“%1” is not a folder. Quorvane scans one project folder.")
            .arg(Texts::shownName(folder));
    }
    return QStringLiteral("“%1” can’t be read. %2").arg(Texts::shownName(folder), reasonOf(error));
}

#include "QuorvaneApp/Updates/UpdateAlert.h"

UpdateAlert UpdateAlert::upToDate(const QString& name, const QString& version) {
    return {
        .title = QStringLiteral("You’re up to date"),
        .text =
            QStringLiteral(
                "%1 %2 is the newest version. %1 checks for updates on its own and will let you know when there’s a new one.")
                .arg(name, version)};
}

UpdateAlert UpdateAlert::failed(const QString& name) {
    return {
        .title = QStringLiteral("Couldn’t check for updates"),
        .text =
            QStringLiteral(
                "Check your internet connection and try again. %1 also checks on its own about once a day.")
                .arg(name)};
}

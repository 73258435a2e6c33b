#include "QuorvaneApp/Model/ExportMessage.h"

#include "QuorvaneApp/Model/Texts.h"

#include <QStringList>

QString exportMessageFor(const ScanKit::SavedReports& saved) {
    if (saved.failure) {
        return QStringLiteral("Couldn't save: %1").arg(Texts::fromUtf8(*saved.failure));
    }
    QStringList names;
    for (const std::filesystem::path& file : saved.files) {
        names.push_back(Texts::shownName(file));
    }
    return QStringLiteral("Saved %1.").arg(names.join(QStringLiteral(", ")));
}

#include "QuorvaneApp/Model/ExportMessage.h"

#include "QuorvaneApp/Model/Texts.h"

#include <QStringList>

QString exportMessageFor(const ScanKit::SavedReports& saved) {
    if (saved.failure) {
        return QStringLiteral("Couldn't save %1: %2")
            .arg(Texts::shownName(saved.failedFile), Texts::fromUtf8(*saved.failure));
    }
    QStringList names;
    for (const std::filesystem::path& file : saved.files) {
        names.push_back(Texts::shownName(file));
    }
    QStringList sentences{QStringLiteral("Saved %1.").arg(names.join(QStringLiteral(", ")))};
    for (const std::string& warning : saved.warnings) {
        sentences.push_back(Texts::fromUtf8(warning));
    }
    return sentences.join(QLatin1Char(' '));
}

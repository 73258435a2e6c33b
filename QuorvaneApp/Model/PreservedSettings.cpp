#include "QuorvaneApp/Model/PreservedSettings.h"

#include <QSettings>

namespace {

const QString includeDevKey = QStringLiteral("includeDev");
const QString preparedByKey = QStringLiteral("preparedBy");

}  // namespace

bool PreservedSettings::includeDev() const {
    return persist_ && QSettings().value(includeDevKey, false).toBool();
}

QString PreservedSettings::preparedBy() const {
    return persist_ ? QSettings().value(preparedByKey).toString() : QString();
}

void PreservedSettings::saveIncludeDev(bool includeDev) const {
    if (persist_) {
        QSettings().setValue(includeDevKey, includeDev);
    }
}

void PreservedSettings::savePreparedBy(const QString& preparedBy) const {
    if (persist_) {
        QSettings().setValue(preparedByKey, preparedBy);
    }
}

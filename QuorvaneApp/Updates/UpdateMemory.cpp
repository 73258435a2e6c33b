#include "QuorvaneApp/Updates/UpdateMemory.h"

#include <QSettings>

namespace {

const QString automaticKey = QStringLiteral("updates/checksAutomatically");
const QString lastCheckKey = QStringLiteral("updates/lastCheck");
const QString skippedKey = QStringLiteral("updates/skippedVersion");

/// What is there now, even if another running copy of the program wrote it.
QVariant read(const QString& key) {
    QSettings settings;
    settings.sync();
    return settings.value(key);
}

}  // namespace

bool UpdateMemory::checksAutomatically() {
    const QVariant value = read(automaticKey);
    return !value.isValid() || value.toBool();
}

void UpdateMemory::saveChecksAutomatically(bool isOn) {
    QSettings().setValue(automaticKey, isOn);
}

std::optional<QDateTime> UpdateMemory::lastCheck() {
    const QDateTime time = QDateTime::fromString(read(lastCheckKey).toString(), Qt::ISODate);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

void UpdateMemory::saveLastCheck(const QDateTime& time) {
    QSettings().setValue(lastCheckKey, time.toUTC().toString(Qt::ISODate));
}

std::optional<QString> UpdateMemory::skippedVersion() {
    const QString version = read(skippedKey).toString();
    return version.isEmpty() ? std::nullopt : std::optional(version);
}

void UpdateMemory::saveSkippedVersion(const QString& version) {
    QSettings().setValue(skippedKey, version);
}

#pragma once

#include <optional>

#include <QDateTime>
#include <QString>

/// What the update check remembers between launches, in a group of its own of the user defaults. Each value is
/// written at once.
namespace UpdateMemory {

/// True when the user never chose.
bool checksAutomatically();
void saveChecksAutomatically(bool isOn);
/// When a check last began, in UTC; absent before the first.
std::optional<QDateTime> lastCheck();
void saveLastCheck(const QDateTime& time);
/// The version that the user does not want to hear of again by itself.
std::optional<QString> skippedVersion();
void saveSkippedVersion(const QString& version);

}  // namespace UpdateMemory

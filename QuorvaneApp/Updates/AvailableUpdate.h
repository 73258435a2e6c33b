#pragma once

#include <optional>

#include <QString>
#include <QUrl>

/// A version that is newer than the running program.
struct AvailableUpdate {
    QString version;           ///< what versions are ordered by
    QString shownVersion;      ///< what people call it
    QString releaseNotes;      ///< plain text; empty when the feed has none
    std::optional<QUrl> page;  ///< where it is downloaded, always https; absent when the feed names none

    bool operator==(const AvailableUpdate&) const = default;
};

#pragma once

#include <QString>

/// A message after a check on the user's wish.
struct UpdateAlert {
    QString title;
    QString text;

    bool operator==(const UpdateAlert&) const = default;

    /// `name` and `version` are those of the running program.
    static UpdateAlert upToDate(const QString& name, const QString& version);
    static UpdateAlert failed(const QString& name);
};

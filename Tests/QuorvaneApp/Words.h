#pragma once

#include <QString>

using Qt::StringLiterals::operator""_s;

/// A value with the case that it belongs to, so that a comparison that fails in a loop names both.
inline QString at(const char* where, const QString& value) {
    return u"%1: %2"_s.arg(QString::fromUtf8(where), value);
}

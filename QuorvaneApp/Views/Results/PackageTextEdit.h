#pragma once

#include <QString>

class QPlainTextEdit;

/// A text of a package to read, select and copy; nothing is typed into it.
QPlainTextEdit* makePackageTextEdit(const QString& objectName, const QString& accessibleName);

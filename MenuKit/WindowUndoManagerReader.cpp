#include "MenuKit/WindowUndoManagerReader.h"

#include "MenuKit/WindowReader.h"

#include <QLineEdit>
#include <QMetaObject>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QTextEdit>

namespace {

/// What cannot be edited has nothing to undo, even if its document remembers how its text came.
const QTextDocument* documentOf(const QWidget* field) {
    if (const auto* plain = qobject_cast<const QPlainTextEdit*>(field)) {
        return plain->isReadOnly() ? nullptr : plain->document();
    }
    if (const auto* rich = qobject_cast<const QTextEdit*>(field)) {
        return rich->isReadOnly() ? nullptr : rich->document();
    }
    return nullptr;
}

}  // namespace

bool UndoManager::canUndo() const {
    if (const auto* line = qobject_cast<const QLineEdit*>(field_.data())) {
        return line->isUndoAvailable();
    }
    const QTextDocument* const document = documentOf(field_);
    return document != nullptr && document->isUndoAvailable();
}

bool UndoManager::canRedo() const {
    if (const auto* line = qobject_cast<const QLineEdit*>(field_.data())) {
        return line->isRedoAvailable();
    }
    const QTextDocument* const document = documentOf(field_);
    return document != nullptr && document->isRedoAvailable();
}

void UndoManager::undo() const {
    if (canUndo()) {
        QMetaObject::invokeMethod(field_.data(), "undo");
    }
}

void UndoManager::redo() const {
    if (canRedo()) {
        QMetaObject::invokeMethod(field_.data(), "redo");
    }
}

UndoManager WindowUndoManagerReader::undoManagerOf(const QWidget* widget) {
    const QWidget* const window = WindowReader::windowOf(widget);
    return UndoManager(window == nullptr ? nullptr : window->focusWidget());
}

#pragma once

#include <QPointer>
#include <QWidget>

/// Undo and redo of the text field that a window's user types in. A value that may outlive the field: then
/// nothing can be undone.
class UndoManager {
public:
    explicit UndoManager(QWidget* field) : field_(field) {}

    bool canUndo() const;
    bool canRedo() const;
    void undo() const;
    void redo() const;

private:
    QPointer<QWidget> field_;
};

namespace WindowUndoManagerReader {

/// The undo manager of the window that hosts the widget: that of its focused text field. Without a window, or
/// with the focus elsewhere, one that can undo nothing.
UndoManager undoManagerOf(const QWidget* widget);

}  // namespace WindowUndoManagerReader

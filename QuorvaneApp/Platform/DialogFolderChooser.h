#pragma once

#include "QuorvaneApp/Platform/FolderChooser.h"

#include <QPointer>
#include <QWidget>

/// Asks with the desktop's own folder panel where there is one, over the given window.
class DialogFolderChooser : public FolderChooser {
public:
    void choose(const FolderQuestion& question, Answer chosen) override;

    /// The window that the panel belongs to; it may be made after this object.
    void setWindow(QWidget* window) { window_ = window; }

private:
    QPointer<QWidget> window_;
};

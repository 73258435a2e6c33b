#pragma once

#include "QuorvaneApp/Updates/UpdatePresenter.h"
#include "QuorvaneApp/Views/Dialogs/UpdateWindow.h"

#include <QPointer>
#include <QWidget>

/// Shows alerts and updates in windows of their own, in front of the given one. Shows nothing in a program
/// without windows.
class DialogUpdatePresenter : public UpdatePresenter {
public:
    void show(const UpdateAlert& alert) override;
    void offer(const AvailableUpdate& update, Answer chosen) override;

    /// The window that they belong to and end with; it may be made after this object.
    void setWindow(QWidget* window) { window_ = window; }

private:
    QPointer<QWidget> window_;
    QPointer<UpdateWindow> offered_;
};

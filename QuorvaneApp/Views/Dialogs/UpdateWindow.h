#pragma once

#include "QuorvaneApp/Updates/AvailableUpdate.h"
#include "QuorvaneApp/Updates/UpdatePresenter.h"

#include <QDialog>

/// Tells that there is a newer version, what is new in it, and where to get it. What the feed says is shown as
/// plain text.
class UpdateWindow : public QDialog {
    Q_OBJECT

public:
    explicit UpdateWindow(const AvailableUpdate& update, QWidget* parent = nullptr);

Q_SIGNALS:
    /// The user's choice, once; the window closes with it.
    void chosen(UpdateChoice choice);

private:
    QWidget* makeHeading(const AvailableUpdate& update);
    QWidget* makeNotes(const AvailableUpdate& update);
    QWidget* makeButtons(bool hasPage);
    void choose(UpdateChoice choice);

    UpdateChoice choice_ = UpdateChoice::remindLater;
};

#pragma once

#include "QuorvaneApp/Views/Controls/Button.h"

class QAction;

/// A push button that stands for a command: it takes over the action's text, tip and state, and triggers it.
class CommandButton : public Button {
    Q_OBJECT

public:
    explicit CommandButton(QAction& action, QWidget* parent = nullptr);

private:
    void follow();

    QAction* action_;
};

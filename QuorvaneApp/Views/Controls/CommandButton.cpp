#include "QuorvaneApp/Views/Controls/CommandButton.h"

#include <QAction>
#include <QKeySequence>

CommandButton::CommandButton(QAction& action, QWidget* parent) : Button({}, parent), action_(&action) {
    setObjectName(action.objectName() + QStringLiteral("Button"));
    connect(this, &QPushButton::clicked, action_, &QAction::trigger);
    connect(action_, &QAction::changed, this, &CommandButton::follow);
    follow();
}

void CommandButton::follow() {
    setText(action_->iconText());
    updateGeometry();
    setEnabled(action_->isEnabled());
    const QString keys = action_->shortcut().toString(QKeySequence::NativeText);
    // What it does stands on it.
    setToolTip(keys);
    setAccessibleName(action_->iconText());
}

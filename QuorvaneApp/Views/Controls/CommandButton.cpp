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
    setText(action_->text());
    updateGeometry();
    setEnabled(action_->isEnabled());
    const QString keys = action_->shortcut().toString(QKeySequence::NativeText);
    setToolTip(keys.isEmpty() ? action_->iconText()
                              : QStringLiteral("%1 (%2)").arg(action_->iconText(), keys));
    setAccessibleName(action_->iconText());
}

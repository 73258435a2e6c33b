#include "MenuKit/MenuBaseline.h"

#include <QAction>
#include <QMenu>

QAction* MenuBaseline::addCloseTo(QMenu& menu) const {
    QAction* const action = menu.addAction(QStringLiteral("Close Window"));
    action->setObjectName(QStringLiteral("closeWindow"));
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    action->setShortcutContext(Qt::ApplicationShortcut);
    QObject::connect(action, &QAction::triggered, action, [close = close] { close.run(); });
    return action;
}

QAction* MenuBaseline::addHelpTo(QMenu& menu) const {
    QAction* const action = menu.addAction(QStringLiteral("%1 Help").arg(help.appName));
    action->setObjectName(QStringLiteral("help"));
    action->setShortcut(help.shortcut);
    QObject::connect(action, &QAction::triggered, action, help.action);
    if (!helpItems.empty()) {
        menu.addSeparator();
    }
    for (QAction* const item : helpItems) {
        menu.addAction(item);
    }
    return action;
}

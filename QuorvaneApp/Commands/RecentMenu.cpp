#include "QuorvaneApp/Commands/RecentMenu.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"

#include <QAction>

RecentMenu::RecentMenu(AppModel& model, QWidget* parent)
    : QMenu(QStringLiteral("Open Recent"), parent), model_(&model) {
    setObjectName(QStringLiteral("recentMenu"));
    connect(this, &QMenu::aboutToShow, model_, &AppModel::lookUpRecentProjects);
    connect(model_, &AppModel::recentProjectsChanged, this, &RecentMenu::rebuild);
    rebuild();
}

void RecentMenu::rebuild() {
    clear();
    for (const RecentProject& project : model_->recentProjects()) {
        // An ampersand in a folder's name is no mnemonic.
        const QString path =
            Texts::oneLine(Texts::shown(project.folder)).replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* const open = addAction(project.isMissing ? QStringLiteral("%1 (missing)").arg(path) : path);
        open->setEnabled(!project.isMissing);
        connect(open, &QAction::triggered, model_,
                [model = model_, folder = project.folder] { model->openIfFolder(folder); });
    }
    addSeparator();
    QAction* const forget = addAction(QStringLiteral("Clear List"), model_, &AppModel::clearRecentProjects);
    forget->setObjectName(QStringLiteral("clearRecent"));
    setEnabled(!model_->recentProjects().empty());
    menuAction()->setEnabled(!model_->recentProjects().empty());
}

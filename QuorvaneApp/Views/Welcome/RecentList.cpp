#include "QuorvaneApp/Views/Welcome/RecentList.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <algorithm>

#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// The page is a place to drop a folder on before it is a list; the menu has the others.
constexpr std::size_t mostShown = 5;
constexpr int mostCharacters = 64;

}  // namespace

RecentList::RecentList(AppModel& model, QWidget* parent)
    : QWidget(parent), model_(&model), rows_(new QVBoxLayout(this)) {
    setObjectName(QStringLiteral("recentProjects"));
    setAccessibleName(QStringLiteral("Recent projects"));
    rows_->setContentsMargins(0, 0, 0, 0);
    rows_->setSpacing(2);
    connect(model_, &AppModel::recentProjectsChanged, this, &RecentList::rebuild);
    rebuild();
}

void RecentList::rebuild() {
    while (QLayoutItem* const item = rows_->takeAt(0)) {
        // Not at once: the button that was pressed may be what brought this about.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    const std::vector<RecentProject>& projects = model_->recentProjects();
    setVisible(!projects.empty());
    if (projects.empty()) {
        return;
    }
    rows_->addWidget(new Label(Label::Role::caption, QStringLiteral("Recent projects")), 0, Qt::AlignHCenter);
    for (std::size_t i = 0; i < std::min(projects.size(), mostShown); ++i) {
        const QString path = Texts::oneLine(Texts::shown(projects[i].folder));
        const QString whole = projects[i].isMissing ? QStringLiteral("%1 (missing)").arg(path) : path;
        const int room = mostCharacters * fontMetrics().averageCharWidth();
        auto* const open = new Button(fontMetrics()
                                          .elidedText(whole, Qt::ElideMiddle, room)
                                          .replace(QLatin1Char('&'), QStringLiteral("&&")));
        open->setFlat(true);
        open->setEnabled(!projects[i].isMissing);
        open->setAccessibleName(QStringLiteral("Open %1").arg(whole));
        connect(open, &QPushButton::clicked, model_,
                [model = model_, folder = projects[i].folder] { model->openIfFolder(folder); });
        rows_->addWidget(open, 0, Qt::AlignHCenter);
    }
}

#include "QuorvaneApp/Views/Results/HeaderBar.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/Field.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

HeaderBar::HeaderBar(AppModel& model, const AppCommands& commands, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      name_(new ElidedLabel(Label::Role::heading)),
      path_(new ElidedLabel(Label::Role::caption)),
      search_(new Field) {
    setObjectName(QStringLiteral("header"));
    search_->setObjectName(QStringLiteral("search"));
    search_->setPlaceholderText(QStringLiteral("Package or license"));
    search_->setAccessibleName(QStringLiteral("Package or license"));
    search_->addClearButton();
    search_->setMinimumWidth(fontMetrics().horizontalAdvance(search_->placeholderText()) +
                             fontMetrics().averageCharWidth() * 3);
    search_->setMaximumWidth(fontMetrics().averageCharWidth() * 44);
    search_->installEventFilter(this);
    // Not `textEdited`: Escape empties the field, too. The model tells only of changes, so this goes round once.
    connect(search_, &QLineEdit::textChanged, model_, &AppModel::setSearch);
    connect(model_, &AppModel::rowsChanged, search_, [this] {
        if (search_->text() != model_->search()) {
            search_->setText(model_->search());
        }
    });

    auto* const names = new QVBoxLayout;
    names->setSpacing(0);
    names->addWidget(name_);
    names->addWidget(path_);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 8, 14, 8);
    layout->setSpacing(8);
    layout->addLayout(names, 2);
    layout->addWidget(search_, 1);
    layout->addWidget(new CommandButton(*commands.action(Command::rescan)));
    layout->addWidget(new CommandButton(*commands.action(Command::exportReport)));
    connect(model_, &AppModel::projectChanged, this, &HeaderBar::showProject);
    showProject();
}

void HeaderBar::startSearch() {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
}

/// Escape empties the field, Down and Return go on to the rows.
bool HeaderBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_ || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape:
            search_->clear();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT searchLeft();
            return true;
        default:
            return QWidget::eventFilter(watched, event);
    }
}

void HeaderBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, height() - 1, width(), 1), Appearance::separator(palette()));
}

void HeaderBar::showProject() {
    if (model_->folder()) {
        name_->setFullText(Texts::shownName(*model_->folder()));
        path_->setFullText(Texts::shown(*model_->folder()));
    }
}

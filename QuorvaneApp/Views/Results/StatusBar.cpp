#include "QuorvaneApp/Views/Results/StatusBar.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Results/ProgressStrip.h"
#include "QuorvaneApp/Views/Results/RowCount.h"
#include "QuorvaneApp/Views/Results/SummaryStrip.h"

#include <QBoxLayout>
#include <QPainter>
#include <QStackedWidget>

StatusBar::StatusBar(AppModel& model, const AppCommands& commands, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      rowCount_(new RowCount(model)),
      warnings_(new CommandButton(*commands.action(Command::showWarnings))),
      summary_(new SummaryStrip(model)),
      figures_(new QWidget),
      layout_(new QBoxLayout(QBoxLayout::LeftToRight, figures_)),
      pages_(new QStackedWidget),
      progress_(new ProgressStrip(model, *commands.action(Command::cancelScan))) {
    layout_->setContentsMargins(12, 4, 12, 4);
    layout_->setSpacing(2);
    warnings_->setFlat(true);
    warnings_->hide();
    connect(model_, &AppModel::warningsChanged, this, [this] {
        warnings_->setVisible(model_->hasPutAwayWarnings());
        arrange();
    });
    auto* const first = new QHBoxLayout;
    first->addWidget(rowCount_);
    first->addSpacing(8);
    first->addWidget(warnings_);
    first->addStretch(1);
    layout_->addLayout(first, 1);
    layout_->addWidget(summary_);
    pages_->addWidget(figures_);
    pages_->addWidget(progress_);
    auto* const whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 1, 0, 0);
    whole->addWidget(pages_);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    connect(model_, &AppModel::scanningChanged, this, &StatusBar::showState);
    connect(model_, &AppModel::projectChanged, this, &StatusBar::showState);
    connect(model_, &AppModel::projectChanged, this, &StatusBar::arrange);
    connect(model_, &AppModel::reportFieldsChanged, this, &StatusBar::arrange);
    showState();
}

void StatusBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    arrange();
}

void StatusBar::arrange() {
    // Room for a selection to be counted, too, so that selecting moves nothing.
    const int count = fontMetrics().averageCharWidth() * 38 +
                      (model_->hasPutAwayWarnings() ? warnings_->sizeHint().width() : 0);
    const int room = width() - 24;
    const bool isBeside = count + summary_->leastWidth() <= room;
    layout_->setDirection(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    summary_->setRoom(isBeside ? room - count : room);
}

void StatusBar::showState() {
    setVisible(model_->scanning() || model_->result() != nullptr);
    pages_->setCurrentWidget(model_->scanning() ? progress_ : figures_);
}

void StatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), Appearance::separator(palette()));
}

#include "QuorvaneApp/Views/Results/SummaryStrip.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "ScanKit/Reports/ReportSummary.h"

#include <QHBoxLayout>
#include <QPainter>

SummaryStrip::SummaryStrip(AppModel& model, QWidget* parent) : QWidget(parent), model_(&model) {
    setObjectName(QStringLiteral("summary"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(4);
    layout->addWidget(new Label(Label::Role::caption, tr("Reports hold")));
    layout->addSpacing(6);
    total_ = addFigure(*layout);
    needsReview_ = addFigure(*layout);
    copyleft_ = addFigure(*layout);
    unknown_ = addFigure(*layout);
    layout->addStretch();
    leftOut_ = new Label(Label::Role::caption);
    layout->addWidget(leftOut_);
    connect(model_, &AppModel::projectChanged, this, &SummaryStrip::showCounts);
    connect(model_, &AppModel::reportFieldsChanged, this, &SummaryStrip::showCounts);
    showCounts();
}

SummaryStrip::Figure SummaryStrip::addFigure(QHBoxLayout& layout) {
    const Figure figure{new Label(Label::Role::strong), new Label(Label::Role::caption)};
    layout.addWidget(figure.number);
    layout.addWidget(figure.words);
    layout.addSpacing(14);
    return figure;
}

void SummaryStrip::show(const Figure& figure, std::size_t count, const QString& one, const QString& several) {
    figure.number->setText(Texts::number(count));
    figure.words->setText(count == 1 ? one : several);
}

void SummaryStrip::showCounts() {
    setVisible(model_->result() != nullptr);
    if (model_->result() == nullptr) {
        return;
    }
    // Counted as the reports count, and not as the table does, which shows dev-only packages in any case.
    const ScanKit::ReportSummary summary(model_->reportRows());
    show(total_, summary.total, tr("package"), tr("packages"));
    show(needsReview_, summary.needsReview, tr("needs review"), tr("need review"));
    show(copyleft_, summary.copyleft, tr("copyleft"), tr("copyleft"));
    show(unknown_, summary.unknownOrMissing, tr("unknown"), tr("unknown"));
    const std::size_t leftOut = model_->result()->dependencies.size() - summary.total;
    leftOut_->setVisible(leftOut > 0);
    leftOut_->setText(
        Texts::counted(leftOut, tr("dev-only package left out"), tr("dev-only packages left out")));
}

void SummaryStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, width(), 1), Appearance::separator(palette()));
}

#include "QuorvaneApp/Views/Results/SummaryStrip.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "ScanKit/Reports/ReportSummary.h"

#include <QHBoxLayout>

SummaryStrip::SummaryStrip(AppModel& model, QWidget* parent) : QWidget(parent), model_(&model) {
    setObjectName(QStringLiteral("summary"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(new Label(Label::Role::caption, QStringLiteral("Reports hold")));
    layout->addSpacing(6);
    total_ = addFigure(*layout);
    needsReview_ = addFigure(*layout);
    copyleft_ = addFigure(*layout);
    unknown_ = addFigure(*layout);
    leftOut_ = new Label(Label::Role::caption);
    layout->addWidget(leftOut_);
    layout->addStretch();
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
    if (model_->result() == nullptr) {
        return;
    }
    // Counted as the reports count, and not as the table does, which shows dev-only packages in any case.
    const ScanKit::ReportSummary summary(model_->reportRows());
    show(total_, summary.total, QStringLiteral("package"), QStringLiteral("packages"));
    show(needsReview_, summary.needsReview, QStringLiteral("needs review"), QStringLiteral("need review"));
    show(copyleft_, summary.copyleft, QStringLiteral("copyleft"), QStringLiteral("copyleft"));
    show(unknown_, summary.unknownOrMissing, QStringLiteral("unknown"), QStringLiteral("unknown"));
    leftOutCount_ = model_->result()->dependencies.size() - summary.total;
    leftOut_->setVisible(leftOutCount_ > 0);
    leftOut_->setText(Texts::counted(leftOutCount_, QStringLiteral("dev-only package left out"),
                                     QStringLiteral("dev-only packages left out")));
}

int SummaryStrip::leastWidth() const {
    int width = 0;
    for (int i = 0; i < layout()->count(); ++i) {
        const QLayoutItem& item = *layout()->itemAt(i);
        width += item.widget() == leftOut_ ? 0 : item.sizeHint().width() + layout()->spacing();
    }
    return width;
}

void SummaryStrip::setRoom(int width) {
    leftOut_->setVisible(leftOutCount_ > 0 && leastWidth() + leftOut_->sizeHint().width() <= width);
}

#include "QuorvaneApp/Views/Controls/ProgressRow.h"

#include "QuorvaneApp/Views/Controls/Label.h"

#include <QHBoxLayout>
#include <QProgressBar>

ProgressRow::ProgressRow(const QString& barName, QWidget* parent)
    : QWidget(parent),
      bar_(new QProgressBar),
      words_(new ElidedLabel(Label::Role::body)),
      layout_(new QHBoxLayout(this)) {
    bar_->setTextVisible(false);
    bar_->setFixedWidth(fontMetrics().averageCharWidth() * 22);
    bar_->setAccessibleName(barName);
    words_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    layout_->setContentsMargins(12, 4, 12, 4);
    layout_->setSpacing(12);
    layout_->addWidget(bar_);
    layout_->addWidget(words_, 1);
}

void ProgressRow::showProgress(std::size_t done, std::size_t total, const QString& words) {
    bar_->setRange(0, static_cast<int>(total));
    bar_->setValue(static_cast<int>(done));
    words_->setFullText(words);
}

void ProgressRow::addButton(QWidget& button) {
    layout_->addWidget(&button);
}

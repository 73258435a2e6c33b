#include "QuorvaneApp/Views/Results/ProgressStrip.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <QHBoxLayout>
#include <QProgressBar>

ProgressStrip::ProgressStrip(AppModel& model, QAction& cancel, QWidget* parent)
    : QWidget(parent), model_(&model), text_(new ElidedLabel(Label::Role::body)), bar_(new QProgressBar) {
    setObjectName(QStringLiteral("progress"));
    bar_->setTextVisible(false);
    bar_->setFixedWidth(fontMetrics().averageCharWidth() * 26);
    bar_->setAccessibleName(tr("Scan progress"));
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 12, 6);
    layout->setSpacing(12);
    layout->addWidget(bar_);
    layout->addWidget(text_, 1);
    layout->addWidget(new CommandButton(cancel));
    connect(model_, &AppModel::scanningChanged, this, &ProgressStrip::showState);
    connect(model_, &AppModel::progressChanged, this, &ProgressStrip::showState);
    showState();
}

void ProgressStrip::showState() {
    setVisible(model_->scanning());
    const ScanningProgress& progress = model_->progress();
    bar_->setRange(0, static_cast<int>(progress.total));
    bar_->setValue(static_cast<int>(progress.done));
    text_->setFullText(progress.total == 0
                           ? tr("Looking for dependency files…")
                           : tr("%1 of %2 packages: %3")
                                 .arg(Texts::number(progress.done), Texts::number(progress.total),
                                      Texts::oneLine(progress.name)));
}

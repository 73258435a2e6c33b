#include "QuorvaneApp/Views/Results/ProgressStrip.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"

ProgressStrip::ProgressStrip(AppModel& model, QAction& cancel, QWidget* parent)
    : ProgressRow(QStringLiteral("Scan progress"), parent), model_(&model) {
    setObjectName(QStringLiteral("progress"));
    addButton(*new CommandButton(cancel));
    connect(model_, &AppModel::progressChanged, this, &ProgressStrip::showState);
    showState();
}

void ProgressStrip::showState() {
    const ScanningProgress& progress = model_->progress();
    showProgress(progress.done, progress.total,
                 progress.total == 0 ? QStringLiteral("Looking for dependency files…")
                                     : QStringLiteral("%1 of %2 packages: %3")
                                           .arg(Texts::number(progress.done), Texts::number(progress.total),
                                                Texts::oneLine(progress.name)));
}

#include "QuorvaneApp/Views/Results/SavingStrip.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"

SavingStrip::SavingStrip(AppModel& model, QWidget* parent)
    : ProgressRow(QStringLiteral("Saving progress"), parent), model_(&model) {
    setObjectName(QStringLiteral("saving"));
    connect(model_, &AppModel::exportingChanged, this, &SavingStrip::showState);
    connect(model_, &AppModel::savingProgressChanged, this, &SavingStrip::showState);
    showState();
}

void SavingStrip::setClosing(bool isClosing) {
    isClosing_ = isClosing;
    showState();
}

void SavingStrip::showState() {
    setVisible(model_->exporting());
    const SavingProgress& progress = model_->savingProgress();
    QString words = progress.fileName.isEmpty()
                        ? QStringLiteral("Saving…")
                        : QStringLiteral("Saving %1…").arg(Texts::oneLine(progress.fileName));
    if (isClosing_) {
        words = QStringLiteral("The window closes when the reports are saved. ") + words;
    }
    showProgress(progress.done, progress.total, words);
}

#include "QuorvaneApp/Views/Results/RowCount.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"

RowCount::RowCount(AppModel& model, QWidget* parent)
    : Label(Label::Role::strong, {}, parent), model_(&model) {
    setObjectName(QStringLiteral("rowCount"));
    connect(model_, &AppModel::rowsChanged, this, &RowCount::showCount);
    connect(model_, &AppModel::projectChanged, this, &RowCount::showCount);
    showCount();
}

void RowCount::setSelectedCount(int count) {
    if (selectedCount_ != count) {
        selectedCount_ = count;
        showCount();
    }
}

void RowCount::showCount() {
    const std::size_t all = model_->result() == nullptr ? 0 : model_->result()->dependencies.size();
    const std::size_t shown = model_->rows().size();
    const QString packages = Texts::counted(all, QStringLiteral("package"), QStringLiteral("packages"));
    QString text = shown == all ? packages : QStringLiteral("%1 of %2").arg(Texts::number(shown), packages);
    // One selected row is seen; of several, most may be scrolled away.
    if (selectedCount_ > 1) {
        text += QStringLiteral(", %1 selected").arg(Texts::number(static_cast<std::size_t>(selectedCount_)));
    }
    setText(text);
    setAccessibleName(text);
}

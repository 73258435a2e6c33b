#include "QuorvaneApp/Views/Dialogs/SettingsDialog.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Updates/UpdaterController.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Dialogs/BoundField.h"
#include "QuorvaneApp/Views/Dialogs/DevPackagesToggle.h"
#include "QuorvaneApp/Views/Dialogs/UpdatesToggle.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

SettingsDialog::SettingsDialog(AppModel& model, UpdaterController& updater, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("settings"));
    setWindowTitle(QStringLiteral("Settings"));
    auto* const preparedBy = new BoundField(model, &AppModel::preparedBy, &AppModel::setPreparedBy);
    preparedBy->setObjectName(QStringLiteral("preparedBy"));
    preparedBy->setAccessibleName(QStringLiteral("Reports prepared by"));
    preparedBy->setPlaceholderText(QStringLiteral("You or your studio"));
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton(new Button(QStringLiteral("Close")), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 20, 22, 18);
    layout->setSpacing(6);
    layout->addWidget(new Label(Label::Role::strong, QStringLiteral("Reports prepared by")));
    layout->addWidget(preparedBy);
    layout->addSpacing(12);
    layout->addWidget(new DevPackagesToggle(model));
    layout->addSpacing(12);
    if (updater.feedURL()) {
        layout->addWidget(new UpdatesToggle(updater));
        layout->addSpacing(12);
    }
    layout->addStretch();
    layout->addWidget(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
}

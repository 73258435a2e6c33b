#include "QuorvaneApp/Views/UpdatesToggle.h"

#include "QuorvaneApp/Updates/UpdaterController.h"
#include "QuorvaneApp/Views/Label.h"

#include <QCheckBox>
#include <QVBoxLayout>

UpdatesToggle::UpdatesToggle(UpdaterController& updater, QWidget* parent) : QWidget(parent) {
    const QString explanation = tr("About once a day. Nothing about you or your projects is sent.");
    auto* const toggle = new QCheckBox(tr("Check for updates automatically"));
    toggle->setObjectName(QStringLiteral("checksAutomatically"));
    toggle->setAccessibleDescription(explanation);
    toggle->setChecked(updater.automaticallyChecksForUpdates());
    connect(toggle, &QCheckBox::toggled, this,
            [&updater](bool isOn) { updater.setAutomaticallyChecksForUpdates(isOn); });

    auto* const words = new Label(Label::Role::caption, explanation);
    words->setWrapping(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(toggle);
    layout->addWidget(words);
}

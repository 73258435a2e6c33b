#include "QuorvaneApp/Views/Dialogs/UpdatesToggle.h"

#include "QuorvaneApp/Updates/UpdaterController.h"

#include <QCheckBox>

UpdatesToggle::UpdatesToggle(UpdaterController& updater, QWidget* parent)
    : ExplainedToggle(QStringLiteral("Check for updates automatically"),
                      QStringLiteral("About once a day. Nothing about you or your projects is sent."),
                      parent) {
    box().setObjectName(QStringLiteral("checksAutomatically"));
    box().setChecked(updater.automaticallyChecksForUpdates());
    connect(&box(), &QCheckBox::toggled, this,
            [&updater](bool isOn) { updater.setAutomaticallyChecksForUpdates(isOn); });
}

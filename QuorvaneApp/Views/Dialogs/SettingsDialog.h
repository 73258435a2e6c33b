#pragma once

#include <QDialog>

class AppModel;
class UpdaterController;

/// The two things that the program remembers: who prepares the reports, and whether they hold dev-only
/// packages; and, where the program has an update feed, whether it is checked automatically. Every change
/// counts at once.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    SettingsDialog(AppModel& model, UpdaterController& updater, QWidget* parent = nullptr);
};

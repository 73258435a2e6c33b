#pragma once

#include <QDialog>

class AppModel;

/// The two things that the program remembers: who prepares the reports, and whether they hold dev-only
/// packages. Every change counts at once.
class SettingsDialog : public QDialog {
    Q_OBJECT

public:
    explicit SettingsDialog(AppModel& model, QWidget* parent = nullptr);
};

#pragma once

#include <QWidget>

class UpdaterController;

/// "Check for updates automatically" with what it means. Every change counts at once.
class UpdatesToggle : public QWidget {
    Q_OBJECT

public:
    explicit UpdatesToggle(UpdaterController& updater, QWidget* parent = nullptr);
};

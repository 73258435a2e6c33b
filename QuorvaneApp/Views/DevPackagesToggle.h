#pragma once

#include <QWidget>

class AppModel;

/// "Include dev-only packages" with what it means, wherever it is offered.
class DevPackagesToggle : public QWidget {
    Q_OBJECT

public:
    explicit DevPackagesToggle(AppModel& model, QWidget* parent = nullptr);
};

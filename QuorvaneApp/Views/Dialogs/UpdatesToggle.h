#pragma once

#include "QuorvaneApp/Views/Controls/ExplainedToggle.h"

class UpdaterController;

/// "Check for updates automatically" with what it means. Every change counts at once.
class UpdatesToggle : public ExplainedToggle {
    Q_OBJECT

public:
    explicit UpdatesToggle(UpdaterController& updater, QWidget* parent = nullptr);
};

#pragma once

#include "QuorvaneApp/Views/Controls/ExplainedToggle.h"

class AppModel;

/// "Include dev-only packages" with what it means, wherever it is offered.
class DevPackagesToggle : public ExplainedToggle {
    Q_OBJECT

public:
    explicit DevPackagesToggle(AppModel& model, QWidget* parent = nullptr);
};

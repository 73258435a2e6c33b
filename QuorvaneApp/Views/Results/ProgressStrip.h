#pragma once

#include "QuorvaneApp/Views/Controls/ProgressRow.h"

class AppModel;
class QAction;

/// How far the running scan is, with the button that ends it.
class ProgressStrip : public ProgressRow {
    Q_OBJECT

public:
    ProgressStrip(AppModel& model, QAction& cancel, QWidget* parent = nullptr);

private:
    void showState();

    AppModel* model_;
};

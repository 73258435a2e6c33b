#pragma once

#include "QuorvaneApp/Views/Controls/ProgressRow.h"

class AppModel;

/// Which report is being saved, while reports are.
class SavingStrip : public ProgressRow {
    Q_OBJECT

public:
    explicit SavingStrip(AppModel& model, QWidget* parent = nullptr);

    /// Says besides that the window waits for it to close.
    void setClosing(bool isClosing);

private:
    void showState();

    AppModel* model_;
    bool isClosing_ = false;
};

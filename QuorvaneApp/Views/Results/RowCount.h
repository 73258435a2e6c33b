#pragma once

#include "QuorvaneApp/Views/Controls/Label.h"

class AppModel;

/// How many of the packages the table shows, and how many of these are selected: "40 of 3,591 packages, 2
/// selected".
class RowCount : public Label {
    Q_OBJECT

public:
    explicit RowCount(AppModel& model, QWidget* parent = nullptr);

    void setSelectedCount(int count);

private:
    void showCount();

    AppModel* model_;
    int selectedCount_ = 0;
};

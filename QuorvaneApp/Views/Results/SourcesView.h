#pragma once

#include "QuorvaneApp/Views/Controls/ScrolledColumn.h"

class AppModel;

/// What stands in the details while no package is selected: the files and folders that the scan read, and what became of the
/// entries of each lockfile.
class SourcesView : public ScrolledColumn {
    Q_OBJECT

public:
    explicit SourcesView(AppModel& model, QWidget* parent = nullptr);

private:
    void rebuild();

    AppModel* model_;
};

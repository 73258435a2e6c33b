#pragma once

#include "QuorvaneApp/Views/Controls/ScrolledColumn.h"

#include <filesystem>
#include <functional>

class AppModel;
class QVBoxLayout;

/// What the scan read: lockfiles and installed packages with what became of their entries, and the folders that
/// the user added, which can be taken back.
class SourcesView : public ScrolledColumn {
    Q_OBJECT

public:
    explicit SourcesView(AppModel& model, QWidget* parent = nullptr);

private:
    void rebuild();
    void addRead(QVBoxLayout& column);
    void addAdded(QVBoxLayout& column);
    void addRemovable(QVBoxLayout& column, const std::filesystem::path& folder, const QString& kind,
                      std::function<void()> remove);

    AppModel* model_;
    bool saysHowToSelect_ = true;
};

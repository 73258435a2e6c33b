#pragma once

#include <QMenu>

class AppModel;

/// The projects scanned last, to be opened again. Those that are missing stay in the list, since a disk may come
/// back, but cannot be chosen.
class RecentMenu : public QMenu {
    Q_OBJECT

public:
    explicit RecentMenu(AppModel& model, QWidget* parent = nullptr);

private:
    void rebuild();

    AppModel* model_;
};

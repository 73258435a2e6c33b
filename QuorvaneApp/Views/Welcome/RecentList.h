#pragma once

#include <QWidget>

class AppModel;
class QVBoxLayout;

/// The projects scanned last as buttons that open them again, the newest first; nothing without any. Missing ones
/// say so and cannot be pressed.
class RecentList : public QWidget {
    Q_OBJECT

public:
    explicit RecentList(AppModel& model, QWidget* parent = nullptr);

private:
    void rebuild();

    AppModel* model_;
    QVBoxLayout* rows_;
};

#pragma once

#include <QWidget>

class AppModel;
class ElidedLabel;
class QAction;
class QProgressBar;

/// How far the running scan is, in numbers and with a name, and a way to end it. Hidden while none runs.
class ProgressStrip : public QWidget {
    Q_OBJECT

public:
    ProgressStrip(AppModel& model, QAction& cancel, QWidget* parent = nullptr);

private:
    void showState();

    AppModel* model_;
    ElidedLabel* text_;
    QProgressBar* bar_;
};

#pragma once

#include <QWidget>

class AppModel;
class QAction;

/// The first thing seen: a large, calm place to drop a project folder on, and the projects scanned last.
class WelcomeView : public QWidget {
    Q_OBJECT

public:
    WelcomeView(AppModel& model, QAction& openFolder, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    AppModel* model_;
    QWidget* icon_;
    QWidget* recent_;
    bool isTight_ = false;
};

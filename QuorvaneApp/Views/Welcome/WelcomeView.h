#pragma once

#include <QWidget>

class QAction;

/// The first thing seen: a large, calm place to drop a project folder on.
class WelcomeView : public QWidget {
    Q_OBJECT

public:
    explicit WelcomeView(QAction& openFolder, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

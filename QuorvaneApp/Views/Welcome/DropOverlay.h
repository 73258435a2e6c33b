#pragma once

#include <QWidget>

/// Lies over the window while something is dragged across it, and says what dropping it would do.
class DropOverlay : public QWidget {
    Q_OBJECT

public:
    /// Covers `parent` whenever it is shown.
    explicit DropOverlay(QWidget* parent);

    void appear();

protected:
    void paintEvent(QPaintEvent* event) override;
};

#pragma once

#include <QWidget>

/// The help in a window of its own.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);
};

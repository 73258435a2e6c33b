#pragma once

#include "ScanKit/Model/ScanWarning.h"

#include <vector>

#include <QWidget>

class AppCommands;
class AppModel;
class FittedScrollArea;
class QPushButton;
class QVBoxLayout;

/// The warnings of the last scan, each with the button that the program has for it and one that puts it away.
/// Beyond the first two they are folded away until asked for.
class WarningStrip : public QWidget {
    Q_OBJECT

public:
    WarningStrip(AppModel& model, const AppCommands& commands, QWidget* parent = nullptr);

    /// The warnings take a part of this height, and leave the table its room.
    void setWindowHeight(int height);

private:
    void showWarnings();
    void rebuild();
    void addWarning(QVBoxLayout& column, const ScanKit::ScanWarning& warning);
    void limitHeight();

    AppModel* model_;
    const AppCommands* commands_;
    FittedScrollArea* area_;
    QPushButton* toggle_;
    std::vector<ScanKit::ScanWarning> shown_;
    bool isUnfolded_ = false;
    int windowHeight_ = 800;
};

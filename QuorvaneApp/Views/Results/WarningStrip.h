#pragma once

#include "ScanKit/Model/ScanWarning.h"

#include <QScrollArea>

class AppCommands;
class AppModel;
class QAction;
class QPushButton;
class QVBoxLayout;

/// The warnings of the last scan, each with the button that the program has for it. Beyond the first two they
/// are folded away until asked for.
class WarningStrip : public QScrollArea {
    Q_OBJECT

public:
    WarningStrip(AppModel& model, const AppCommands& commands, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void rebuild();
    void addWarning(QVBoxLayout& column, const ScanKit::ScanWarning& warning);
    void addToggle(QVBoxLayout& column, std::size_t folded);
    void fitHeight();

    AppModel* model_;
    const AppCommands* commands_;
    bool isUnfolded_ = false;
};

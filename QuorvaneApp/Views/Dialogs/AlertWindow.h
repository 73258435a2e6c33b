#pragma once

#include <QDialog>

/// A message with the program's icon, a title, an explanation, and one button "OK". Whoever shows it decides
/// whether it blocks other windows.
class AlertWindow : public QDialog {
    Q_OBJECT

public:
    AlertWindow(const QString& title, const QString& text, QWidget* parent = nullptr);
};

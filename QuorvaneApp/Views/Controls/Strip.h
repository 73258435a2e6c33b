#pragma once

#include "ScanKit/Model/Flag.h"

#include <QWidget>

class Label;
class QHBoxLayout;

/// One sentence across the window, with the shape and colour of its severity and buttons at its right.
class Strip : public QWidget {
    Q_OBJECT

public:
    explicit Strip(ScanKit::Flag::Severity severity, QWidget* parent = nullptr);

    ScanKit::Flag::Severity severity() const { return severity_; }
    void setSeverity(ScanKit::Flag::Severity severity);
    void setSentence(const QString& sentence);
    /// The strip owns the button from now on.
    void addButton(QWidget& button);
    /// Adds a button that emits `dismissed`.
    void addDismissButton();

Q_SIGNALS:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ScanKit::Flag::Severity severity_;
    Label* sentence_;
    QHBoxLayout* layout_;
};

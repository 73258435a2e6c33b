#pragma once

#include "QuorvaneApp/Views/Controls/Label.h"

#include <QWidget>

class QVBoxLayout;

/// The program's icon beside a title and lines of text, all as plain text.
class ProgramHeading : public QWidget {
    Q_OBJECT

public:
    explicit ProgramHeading(const QString& title, QWidget* parent = nullptr);

    /// Adds a line, or a paragraph that wraps, below what is there. It belongs to this widget.
    Label* addLine(Label::Role role, const QString& text);

private:
    QVBoxLayout* lines_;
};

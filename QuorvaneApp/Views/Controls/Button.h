#pragma once

#include <QPushButton>

/// A push button with room around its text, whatever the font.
class Button : public QPushButton {
    Q_OBJECT

public:
    explicit Button(const QString& text = {}, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
};

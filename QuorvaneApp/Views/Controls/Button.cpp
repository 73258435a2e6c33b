#include "QuorvaneApp/Views/Controls/Button.h"

#include <algorithm>

Button::Button(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    // In a dialog any button with the focus would take Return from the one that is meant.
    setAutoDefault(false);
}

QSize Button::sizeHint() const {
    const QSize hint = QPushButton::sizeHint();
    const int textWidth = fontMetrics().horizontalAdvance(text());
    return {std::max(hint.width(), textWidth + 2 * fontMetrics().height()), hint.height() + 4};
}

#include "QuorvaneApp/Views/Controls/Field.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QDragEnterEvent>
#include <QEvent>
#include <QMimeData>
#include <QToolButton>

namespace {

/// Less than text needs: a hint that looks like typed text would be taken for it.
constexpr double leastContrast = 3.5;

}  // namespace

Field::Field(const QString& text, QWidget* parent) : QLineEdit(text, parent) {
    mendPlaceholder();
}

void Field::addClearButton() {
    setClearButtonEnabled(true);
    // Qt gives the button no name that a screen reader could say.
    for (QToolButton* const button : findChildren<QToolButton*>()) {
        button->setAccessibleName(QStringLiteral("Clear"));
    }
}

void Field::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !isMending_) {
        mendPlaceholder();
    }
}

/// A folder that is dropped is meant for the window, not for its path to be written here.
void Field::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) {
        event->ignore();
        return;
    }
    QLineEdit::dragEnterEvent(event);
}

void Field::mendPlaceholder() {
    QPalette mended = palette();
    const QColor base = mended.color(QPalette::Base);
    QColor placeholder = mended.color(QPalette::PlaceholderText);
    // Palettes give it as a veil over the text's colour: what the eye sees is both, mixed.
    placeholder = Appearance::mixed(base, placeholder, placeholder.alphaF());
    if (Appearance::contrast(placeholder, base) >= leastContrast) {
        return;
    }
    mended.setColor(QPalette::PlaceholderText, Appearance::mixed(mended.color(QPalette::Text), base, 0.4));
    isMending_ = true;
    setPalette(mended);
    isMending_ = false;
}

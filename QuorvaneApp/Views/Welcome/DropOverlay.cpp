#include "QuorvaneApp/Views/Welcome/DropOverlay.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QPainter>

DropOverlay::DropOverlay(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("Drop the folder to scan it"));
    hide();
}

void DropOverlay::appear() {
    setGeometry(parentWidget()->rect());
    raise();
    show();
}

void DropOverlay::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    QColor veil = palette().color(QPalette::Base);
    veil.setAlphaF(0.88F);
    painter.fillRect(rect(), veil);
    painter.setPen(QPen(accent, 3));
    painter.drawRoundedRect(QRectF(rect()).adjusted(12, 12, -12, -12), 14, 14);
    painter.setPen(palette().color(QPalette::Text));
    painter.setFont(Appearance::adjusted(font(), 5, true));
    painter.drawText(rect(), Qt::AlignCenter, accessibleName());
}

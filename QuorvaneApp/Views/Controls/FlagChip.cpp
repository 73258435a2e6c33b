#include "QuorvaneApp/Views/Controls/FlagChip.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QPainter>

namespace {

constexpr int padding = 8;

QString severityWords(ScanKit::Flag::Severity severity) {
    switch (severity) {
        case ScanKit::Flag::Severity::high:
            return QStringLiteral("High severity");
        case ScanKit::Flag::Severity::medium:
            return QStringLiteral("Medium severity");
        case ScanKit::Flag::Severity::low:
            return QStringLiteral("Low severity");
    }
    return {};
}

}  // namespace

FlagChip::FlagChip(ScanKit::Flag flag, QWidget* parent) : QWidget(parent), flag_(flag) {
    const QString words = severityWords(ScanKit::severity(flag_));
    setAccessibleName(QStringLiteral("Flag: %1. %2").arg(text(), words));
    setToolTip(words);
    setFont(Appearance::adjusted(font(), 0, true));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QString FlagChip::text() const {
    return Texts::fromUtf8(ScanKit::label(flag_));
}

QSize FlagChip::sizeHint() const {
    const int glyph = Appearance::glyphSize(fontMetrics());
    return {fontMetrics().horizontalAdvance(text()) + glyph + 3 * padding, fontMetrics().height() + padding};
}

void FlagChip::paintEvent(QPaintEvent*) {
    const ScanKit::Flag::Severity severity = ScanKit::severity(flag_);
    const int glyph = Appearance::glyphSize(fontMetrics());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Appearance::severityBackground(severity, palette()));
    painter.drawRoundedRect(rect(), 6, 6);
    painter.drawPixmap(padding, (height() - glyph) / 2,
                       Appearance::severityPixmap(severity, glyph, devicePixelRatioF(),
                                                  Appearance::severityColor(severity, palette())));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect().adjusted(glyph + 2 * padding, 0, -padding, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     text());
}

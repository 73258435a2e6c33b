#include "QuorvaneApp/Views/Controls/LinkButton.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

namespace {

constexpr int wrapping = Qt::AlignLeft | Qt::AlignTop | Qt::TextWrapAnywhere;

}  // namespace

LinkButton::LinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    // An ampersand in an address is no mnemonic: the text is drawn and named as it is.
    setText(QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")));
    setAccessibleName(text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

QSize LinkButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(accessibleName()) + 2, fontMetrics().height() + 2};
}

QSize LinkButton::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 8, fontMetrics().height() + 2};
}

int LinkButton::heightForWidth(int width) const {
    return fontMetrics().boundingRect(QRect(0, 0, width, 10000), wrapping, accessibleName()).height() + 2;
}

void LinkButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(isDown() ? QPalette::LinkVisited : QPalette::Link));
    painter.drawText(rect(), wrapping, accessibleName());
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }
}

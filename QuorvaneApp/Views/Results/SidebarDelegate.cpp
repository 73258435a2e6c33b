#include "QuorvaneApp/Views/Results/SidebarDelegate.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <algorithm>

#include <QPainter>

namespace {

constexpr int inset = 8;
constexpr int padding = 10;
constexpr int cornerRadius = 6;

void paintHeading(QPainter& painter, const QStyleOptionViewItem& option, const QString& text) {
    painter.setFont(Appearance::adjusted(option.font, -1, true));
    // A heading cannot be chosen, but it is no less readable for that.
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(QPalette::Active);
    painter.setPen(Appearance::secondaryText(palette));
    const QRect room = option.rect.adjusted(inset + padding, 0, -inset, -4);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignBottom, text);
}

void paintFilter(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) {
    const QPalette& palette = option.palette;
    const QRect pill = option.rect.adjusted(inset, 1, -inset, -1);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isFocused = option.state.testFlag(QStyle::State_HasFocus);
    QColor textColor = palette.color(QPalette::WindowText);
    QColor countColor = Appearance::secondaryText(palette);
    // The choice stays visible, paler, while the keys are in the table.
    if (isSelected) {
        const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isFocused ? accent
                                   : Appearance::mixed(palette.color(QPalette::Window), accent, 0.28));
        painter.drawRoundedRect(pill, cornerRadius, cornerRadius);
        textColor = isFocused ? palette.color(QPalette::Active, QPalette::HighlightedText) : textColor;
        countColor = textColor;
    }
    const QRect room = pill.adjusted(padding, 0, -padding, 0);
    const QString count = index.data(SidebarDelegate::countRole).toString();
    const int countWidth = option.fontMetrics.horizontalAdvance(count);
    painter.setPen(countColor);
    painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, count);
    painter.setPen(textColor);
    const QString text = index.data(Qt::DisplayRole).toString();
    painter.drawText(
        room, Qt::AlignLeft | Qt::AlignVCenter,
        option.fontMetrics.elidedText(text, Qt::ElideRight, room.width() - countWidth - padding));
}

}  // namespace

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.data(isHeadingRole).toBool()) {
        paintHeading(*painter, option, index.data(Qt::DisplayRole).toString());
    } else {
        paintFilter(*painter, option, index);
    }
    painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int extra = index.data(isHeadingRole).toBool() ? 20 : 12;
    const int words = option.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString());
    const int count = std::max(option.fontMetrics.horizontalAdvance(index.data(countRole).toString()),
                               option.fontMetrics.horizontalAdvance(QStringLiteral("00,000")));
    return {words + count + 2 * inset + 4 * padding, option.fontMetrics.height() + extra};
}

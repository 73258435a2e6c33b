#include "QuorvaneApp/Views/Results/DependencyDelegate.h"

#include "QuorvaneApp/Model/DependencyTableModel.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>

namespace {

using Severity = ScanKit::Flag::Severity;

constexpr int padding = 9;

/// A table paints its cells anew while it scrolls, and drawing the same few shapes each time is what costs.
QPixmap cachedGlyph(Severity severity, int size, double pixelRatio, const QColor& color) {
    const QString key = QStringLiteral("severity-%1-%2-%3-%4")
                            .arg(static_cast<int>(severity))
                            .arg(size)
                            .arg(pixelRatio)
                            .arg(color.rgba());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = Appearance::severityPixmap(severity, size, pixelRatio, color);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

QColor textColor(const QStyleOptionViewItem& option) {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    return option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
}

/// The cell's background, then shape and label in the colour of the severity.
void paintFlag(QPainter& painter, const QStyleOptionViewItem& option, ScanKit::Flag flag, int further) {
    const Severity severity = ScanKit::severity(flag);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor color = isSelected ? textColor(option) : Appearance::severityColor(severity, option.palette);
    const double ratio = option.widget == nullptr ? 1 : option.widget->devicePixelRatioF();
    const int size = Appearance::glyphSize(option.fontMetrics);
    const QRect room = option.rect.adjusted(padding, 0, -padding, 0);
    const QString text = further == 0 ? option.text : QStringLiteral("%1  +%2").arg(option.text).arg(further);
    const int textRoom = room.width() - size - padding;
    painter.save();
    painter.drawPixmap(room.left(), room.center().y() - size / 2, cachedGlyph(severity, size, ratio, color));
    painter.setPen(color);
    painter.drawText(room.adjusted(size + padding, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     option.fontMetrics.elidedText(text, Qt::ElideRight, textRoom));
    painter.restore();
}

/// The word "dev" in a small frame, right of the name; nothing where the name leaves no room.
void paintDevMark(QPainter& painter, const QStyleOptionViewItem& option) {
    const QFont font = Appearance::adjusted(option.font, -1.5);
    const QFontMetrics metrics(font);
    const QString text = DependencyDelegate::tr("dev");
    const int width = metrics.horizontalAdvance(text) + 10;
    const QRect room = option.rect.adjusted(0, 0, -6, 0);
    QRect frame(room.right() - width, 0, width, metrics.height() + 1);
    frame.moveCenter({frame.center().x(), room.center().y()});
    const QColor color = option.state.testFlag(QStyle::State_Selected)
                             ? textColor(option)
                             : Appearance::secondaryText(option.palette);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(QPen(color, 1));
    painter.drawRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.drawText(frame, Qt::AlignCenter, text);
    painter.restore();
}

int devMarkWidth(const QStyleOptionViewItem& option) {
    const QFontMetrics metrics(Appearance::adjusted(option.font, -1.5));
    return metrics.horizontalAdvance(DependencyDelegate::tr("dev")) + 22;
}

}  // namespace

void DependencyDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = Qt::ElideRight;
    // The row is the unit of selection: no frame around a single cell of it.
    option->state.setFlag(QStyle::State_HasFocus, false);
}

void DependencyDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const auto column = static_cast<DependencyColumn>(index.column());
    const QVariant flag =
        column == DependencyColumn::flag ? index.data(DependencyTableModel::flagRole) : QVariant();
    const bool isMarked =
        column == DependencyColumn::package && index.data(DependencyTableModel::isDevRole).toBool();
    const QString text = cell.text;
    if (flag.isValid()) {
        cell.text.clear();
    } else if (isMarked) {
        const int room = cell.rect.width() - devMarkWidth(cell) - padding;
        cell.text = cell.fontMetrics.elidedText(text, Qt::ElideRight, room);
    }
    // The style paints the cell; a flag's text was taken out of it and follows in its own colour.
    const QStyle* const style = cell.widget == nullptr ? QApplication::style() : cell.widget->style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (flag.isValid()) {
        cell.text = text;
        paintFlag(*painter, cell, static_cast<ScanKit::Flag::Case>(flag.toInt()),
                  index.data(DependencyTableModel::furtherFlagsRole).toInt());
    } else if (isMarked) {
        paintDevMark(*painter, cell);
    }
}

#include "QuorvaneApp/Views/Results/DependencyDelegate.h"

#include "QuorvaneApp/Model/DependencyTableModel.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <algorithm>

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QToolTip>

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

QString furtherText(int further) {
    return further == 0 ? QString() : QStringLiteral("+%1").arg(further);
}

/// What a flag's cell needs beside its label: the shape, and the number of further flags.
int besideLabel(const QFontMetrics& metrics, int further) {
    const int number = further == 0 ? 0 : metrics.horizontalAdvance(furtherText(further)) + padding;
    return Appearance::glyphSize(metrics) + padding + number;
}

/// Shape and label in the colour of the severity. The label is what is cut: that there is more must be seen.
void paintFlag(QPainter& painter, const QStyleOptionViewItem& option, ScanKit::Flag flag, int further) {
    const Severity severity = ScanKit::severity(flag);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const QColor color = isSelected ? textColor(option) : Appearance::severityColor(severity, option.palette);
    const double ratio = option.widget == nullptr ? 1 : option.widget->devicePixelRatioF();
    const int size = Appearance::glyphSize(option.fontMetrics);
    const QRect room = option.rect.adjusted(padding, 0, -padding, 0);
    const QString label = option.fontMetrics.elidedText(
        option.text, Qt::ElideRight, room.width() - besideLabel(option.fontMetrics, further));
    painter.save();
    painter.setClipRect(option.rect);
    painter.drawPixmap(room.left(), room.center().y() - size / 2, cachedGlyph(severity, size, ratio, color));
    painter.setPen(color);
    const QRect words = room.adjusted(size + padding, 0, 0, 0);
    painter.drawText(words, Qt::AlignLeft | Qt::AlignVCenter, label);
    painter.drawText(words.adjusted(option.fontMetrics.horizontalAdvance(label) + padding, 0, 0, 0),
                     Qt::AlignLeft | Qt::AlignVCenter, furtherText(further));
    painter.restore();
}

const QString devWord = QStringLiteral("dev");

int devMarkWidth(const QFont& font) {
    return QFontMetrics(Appearance::adjusted(font, -1.5)).horizontalAdvance(devWord) + 10;
}

/// The word "dev" in a small frame behind the name.
void paintDevMark(QPainter& painter, const QStyleOptionViewItem& option) {
    const QFont font = Appearance::adjusted(option.font, -1.5);
    const int width = devMarkWidth(option.font);
    QRect frame(0, 0, width, QFontMetrics(font).height() + 1);
    frame.moveCenter({option.rect.right() - padding - width / 2, option.rect.center().y()});
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(font);
    painter.setPen(
        QPen(option.palette.color(option.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText
                                                                                : QPalette::Text),
             1));
    painter.drawRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.drawText(frame, Qt::AlignCenter, devWord);
    painter.restore();
}

/// The slanted letters of a dev-only package are wider or narrower than the table's.
QFont devFont(QFont font) {
    font.setItalic(true);
    return font;
}

/// Which part of the text is left out where room is short: names differ most at their ends.
Qt::TextElideMode elideModeOf(DependencyColumn column) {
    return column == DependencyColumn::package ? Qt::ElideMiddle : Qt::ElideRight;
}

DependencyColumn columnOf(const QModelIndex& index) {
    return static_cast<DependencyColumn>(index.column());
}

bool isDevName(const QModelIndex& index) {
    return columnOf(index) == DependencyColumn::package &&
           index.data(DependencyTableModel::isDevRole).toBool();
}

}  // namespace

int DependencyDelegate::widthOf(const QFont& font, const QStringList& texts, DependencyColumn column) const {
    const QFontMetrics metrics(font);
    const QFontMetrics devMetrics(devFont(font));
    const bool isName = column == DependencyColumn::package;
    int width = 0;
    for (const QString& text : texts) {
        width = std::max(width, metrics.horizontalAdvance(text));
        width = std::max(width, isName ? devMetrics.horizontalAdvance(text) : 0);
    }
    if (column == DependencyColumn::flag) {
        width += besideLabel(metrics, 1);
    }
    return width + 2 * padding + 2;
}

void DependencyDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = elideModeOf(columnOf(index));
    // The row is the unit of selection: no frame around a single cell of it.
    option->state.setFlag(QStyle::State_HasFocus, false);
    if (isDevName(index)) {
        option->font = devFont(option->font);
        option->fontMetrics = QFontMetrics(option->font);
        option->palette.setColor(QPalette::Text, Appearance::secondaryText(option->palette));
    }
}

void DependencyDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QVariant flag =
        columnOf(index) == DependencyColumn::flag ? index.data(DependencyTableModel::flagRole) : QVariant();
    const QString text = cell.text;
    if (flag.isValid()) {
        cell.text.clear();
    }
    // The style paints the cell; a flag's text was taken out of it and follows in its own colour.
    const QStyle* const style = cell.widget == nullptr ? QApplication::style() : cell.widget->style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (flag.isValid()) {
        cell.text = text;
        paintFlag(*painter, cell, static_cast<ScanKit::Flag::Case>(flag.toInt()),
                  index.data(DependencyTableModel::furtherFlagsRole).toInt());
    } else if (isDevName(index) &&
               widthOf(option.font, {text}, columnOf(index)) + padding + devMarkWidth(option.font) <=
                   cell.rect.width()) {
        paintDevMark(*painter, cell);
    }
}

bool DependencyDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool isCut = widthOf(option.font, {index.data().toString()}, columnOf(index)) > option.rect.width();
    const bool hasMore = columnOf(index) == DependencyColumn::flag &&
                         index.data(DependencyTableModel::furtherFlagsRole).toInt() > 0;
    if (event->type() == QEvent::ToolTip && !isCut && !hasMore) {
        QToolTip::hideText();
        return true;
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

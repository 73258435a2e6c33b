#include "QuorvaneApp/Views/Results/TableHeader.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionHeader>

namespace {

constexpr int widthStep = 16;

}  // namespace

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setObjectName(QStringLiteral("tableHeader"));
    setAccessibleName(QStringLiteral("Column headings"));
    setFocusPolicy(Qt::TabFocus);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setHighlightSections(false);
    setSectionsClickable(true);
    setSortIndicatorClearable(true);
    setSortIndicator(-1, Qt::AscendingOrder);
}

int TableHeader::headingWidth(int section) const {
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    return fontMetrics().horizontalAdvance(model()->headerData(section, Qt::Horizontal).toString()) +
           2 * margin + 2;
}

void TableHeader::keyPressEvent(QKeyEvent* event) {
    const bool resizes = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right: {
            const int step = event->key() == Qt::Key_Left ? -1 : 1;
            if (resizes) {
                Q_EMIT sectionChosen(
                    section_, std::max(sectionSize(section_) + step * widthStep, minimumSectionSize()));
            } else {
                goBy(step);
            }
            return;
        }
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            sortBySection();
            return;
        default:
            // What it makes of other keys is meant for a table's cells.
            QWidget::keyPressEvent(event);
    }
}

/// The order that a click would bring: upwards, downwards, the result's own.
void TableHeader::sortBySection() {
    if (sortIndicatorSection() != section_) {
        setSortIndicator(section_, Qt::AscendingOrder);
    } else if (sortIndicatorOrder() == Qt::AscendingOrder) {
        setSortIndicator(section_, Qt::DescendingOrder);
    } else {
        setSortIndicator(-1, Qt::AscendingOrder);
    }
}

/// To the next section that is shown, if there is one.
void TableHeader::goBy(int step) {
    int section = section_ + step;
    while (section >= 0 && section < count() && isSectionHidden(section)) {
        section += step;
    }
    section_ = section >= 0 && section < count() ? section : section_;
    viewport()->update();
}

void TableHeader::focusInEvent(QFocusEvent* event) {
    QHeaderView::focusInEvent(event);
    viewport()->update();
}

void TableHeader::focusOutEvent(QFocusEvent* event) {
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

/// Cut to what the style leaves of the section for words, with its margins and the arrow of the sorting.
void TableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    QStyleOptionHeader placed = *option;
    placed.rect = QRect(0, 0, sectionSize(section), height());
    const int room = style()->subElementRect(QStyle::SE_HeaderLabel, &placed, this).width();
    option->text = option->fontMetrics.elidedText(model()->headerData(section, Qt::Horizontal).toString(),
                                                  Qt::ElideRight, room);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (hasFocus() && section == section_) {
        painter->save();
        painter->setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter->drawRect(rect.adjusted(2, 2, -2, -2));
        painter->restore();
    }
}

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
                goTo(section_ + step);
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

void TableHeader::goTo(int section) {
    section_ = std::clamp(section, 0, count() - 1);
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

/// What the style leaves of the section for words, with its margins and the arrow of the sorting.
void TableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int section) const {
    QHeaderView::initStyleOptionForIndex(option, section);
    const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    const bool isSorted = isSortIndicatorShown() && sortIndicatorSection() == section;
    const int arrow = isSorted ? style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, this) + margin : 0;
    option->text =
        option->fontMetrics.elidedText(model()->headerData(section, Qt::Horizontal).toString(),
                                       Qt::ElideRight, sectionSize(section) - 2 * margin - 2 - arrow);
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

#include "QuorvaneApp/Views/Controls/FittedScrollArea.h"

#include <algorithm>

#include <QEvent>
#include <QLayout>

FittedScrollArea::FittedScrollArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Not fixed: a layout would hold it to the height that it had at another width.
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void FittedScrollArea::setGreatestHeight(int height) {
    if (greatestHeight_ != height) {
        greatestHeight_ = height;
        updateGeometry();
    }
}

int FittedScrollArea::heightForWidth(int width) const {
    return std::min(neededHeight(width), greatestHeight_);
}

int FittedScrollArea::neededHeight(int width) const {
    if (widget() == nullptr) {
        return 0;
    }
    const QLayout& layout = *widget()->layout();
    return layout.hasHeightForWidth() ? layout.totalHeightForWidth(width) : layout.totalSizeHint().height();
}

void FittedScrollArea::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    showScrollBarIfNeeded();
}

/// A scroll bar takes width, so that words wrap for which there was room, so that a scroll bar is needed: where
/// everything fits without one, there is none.
void FittedScrollArea::showScrollBarIfNeeded() {
    setVerticalScrollBarPolicy(neededHeight(width()) <= height() ? Qt::ScrollBarAlwaysOff
                                                                 : Qt::ScrollBarAsNeeded);
}

QSize FittedScrollArea::sizeHint() const {
    return {QScrollArea::sizeHint().width(), heightForWidth(width())};
}

QSize FittedScrollArea::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 20, 0};
}

/// What changes in the page may change the height.
bool FittedScrollArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        showScrollBarIfNeeded();
    }
    return QScrollArea::eventFilter(watched, event);
}

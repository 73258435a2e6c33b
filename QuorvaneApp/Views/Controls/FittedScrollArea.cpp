#include "QuorvaneApp/Views/Controls/FittedScrollArea.h"

#include <algorithm>

#include <QEvent>
#include <QLayout>

FittedScrollArea::FittedScrollArea(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
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
    if (widget() == nullptr) {
        return 0;
    }
    const QLayout& layout = *widget()->layout();
    const int needed =
        layout.hasHeightForWidth() ? layout.totalHeightForWidth(width) : layout.totalSizeHint().height();
    return std::min(needed, greatestHeight_);
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
    }
    return QScrollArea::eventFilter(watched, event);
}

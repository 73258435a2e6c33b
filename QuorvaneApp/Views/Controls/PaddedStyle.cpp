#include "QuorvaneApp/Views/Controls/PaddedStyle.h"

#include <QHeaderView>
#include <QTableView>

namespace {

constexpr int padding = 8;

}  // namespace

void PaddedStyle::applyTo(QTableView& table) {
    auto* const style = new PaddedStyle;
    style->setParent(&table);
    table.setStyle(style);
    table.horizontalHeader()->setStyle(style);
}

int PaddedStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    if (metric == PM_FocusFrameHMargin || metric == PM_HeaderMargin) {
        return padding;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

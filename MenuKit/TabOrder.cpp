#include "MenuKit/TabOrder.h"

#include <QSet>
#include <QWidget>

namespace TabOrder {
namespace {

bool takesTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr;
}

}  // namespace

void lead(const std::vector<QWidget*>& parts) {
    QWidget* last = nullptr;
    QSet<const QWidget*> placed;
    const auto append = [&](QWidget* widget) {
        if (!takesTab(*widget) || placed.contains(widget)) {
            return;
        }
        if (last != nullptr) {
            QWidget::setTabOrder(last, widget);
        }
        last = widget;
        placed.insert(widget);
    };
    for (QWidget* const part : parts) {
        append(part);
        for (QWidget* const widget : part->findChildren<QWidget*>()) {
            // Lists that open from a button are windows of their own.
            if (widget->window() == part->window()) {
                append(widget);
            }
        }
    }
}

}  // namespace TabOrder

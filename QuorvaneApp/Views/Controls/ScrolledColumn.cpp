#include "QuorvaneApp/Views/Controls/ScrolledColumn.h"

#include <QVBoxLayout>

ScrolledColumn::ScrolledColumn(const QString& objectName, const QString& accessibleName, QWidget* parent)
    : QScrollArea(parent) {
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    setWidgetResizable(true);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

QVBoxLayout* ScrolledColumn::newColumn() {
    auto* const page = new QWidget;
    page->setAutoFillBackground(true);
    page->setBackgroundRole(QPalette::Base);
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(14, 12, 14, 14);
    column->setSpacing(10);
    return column;
}

void ScrolledColumn::setColumn(QVBoxLayout* column) {
    column->addStretch();
    setWidget(column->parentWidget());
}

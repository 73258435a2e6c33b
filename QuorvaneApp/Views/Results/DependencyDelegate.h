#pragma once

#include <QStyledItemDelegate>

/// Draws the table's cells: the most serious flag with the shape and colour of its severity and the number of
/// further ones, and a mark beside packages that only development needs.
class DependencyDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

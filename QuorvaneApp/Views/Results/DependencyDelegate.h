#pragma once

#include "QuorvaneApp/Model/DependencyOrder.h"

#include <QStyledItemDelegate>

/// Draws the table's cells: the most serious flag with the shape and colour of its severity and the number of
/// further ones; packages that only development needs in a paler, slanted name, with a mark where there is room
/// beside it. Tells in a tool tip what a cell has no room for, and nothing that it shows.
class DependencyDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// How wide a column must be to show each of these texts whole, with the shape and number of a flag, and without
    /// the mark of a dev-only package, which takes no room from any text.
    int widthOf(const QFont& font, const QStringList& texts, DependencyColumn column) const;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

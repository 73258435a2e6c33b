#pragma once

#include <QStyledItemDelegate>

/// Draws a filter of the sidebar with its count at the right, and headings in small letters.
class SidebarDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    enum Role { filterRole = Qt::UserRole, countRole, isHeadingRole };

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

#pragma once

#include <QScrollArea>

class QVBoxLayout;

/// A column of text as wide as its place, which scrolls when it is longer: what the details show.
class ScrolledColumn : public QScrollArea {
    Q_OBJECT

public:
    ScrolledColumn(const QString& objectName, const QString& accessibleName, QWidget* parent = nullptr);

protected:
    /// An empty column, which takes the place of the one before once `setColumn` is called.
    static QVBoxLayout* newColumn();
    void setColumn(QVBoxLayout* column);
};

#pragma once

#include <QProxyStyle>

class QTableView;

/// The desktop's style with more room at the left and right of a table's cells and headings.
class PaddedStyle : public QProxyStyle {
    Q_OBJECT

public:
    /// The table keeps the style.
    static void applyTo(QTableView& table);

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

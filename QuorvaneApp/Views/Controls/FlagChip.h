#pragma once

#include "ScanKit/Model/Flag.h"

#include <QWidget>

/// A flag with the shape and colour of its severity and its label, on a calm background. Its severity is also
/// told in words, to screen readers and in a tip.
class FlagChip : public QWidget {
    Q_OBJECT

public:
    explicit FlagChip(ScanKit::Flag flag, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text() const;

    ScanKit::Flag flag_;
};

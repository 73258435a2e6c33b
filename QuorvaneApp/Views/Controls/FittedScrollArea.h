#pragma once

#include <QScrollArea>

/// A scrolled page that is as tall as its content needs at the width it has, up to a limit; then it scrolls. The
/// layout around it asks for the height, so that it is right at once after every change of the width.
class FittedScrollArea : public QScrollArea {
    Q_OBJECT

public:
    explicit FittedScrollArea(QWidget* parent = nullptr);

    /// In pixels.
    void setGreatestHeight(int height);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int neededHeight(int width) const;
    void showScrollBarIfNeeded();

    int greatestHeight_ = QWIDGETSIZE_MAX;
};

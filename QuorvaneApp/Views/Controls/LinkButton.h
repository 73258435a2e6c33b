#pragma once

#include <QAbstractButton>

/// A link: a button that looks like underlined text. It wraps where room is short and is reached with the
/// keys.
class LinkButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit LinkButton(const QString& text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

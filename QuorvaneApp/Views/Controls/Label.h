#pragma once

#include <QLabel>

/// A line or paragraph of plain text: whatever a package calls itself is never read as markup. Follows the
/// palette when it changes from light to dark.
class Label : public QLabel {
    Q_OBJECT

public:
    enum class Role { body, strong, caption, heading, title };

    explicit Label(Role role, const QString& text = {}, QWidget* parent = nullptr);

    /// Lets the text be selected and copied, with the keys too.
    void makeSelectable();
    void setWrapping(bool wraps) { setWordWrap(wraps); }

public Q_SLOTS:
    /// The selected words, or all of them.
    void copy();
    void selectAll();

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyPalette();

    Role role_;
    bool isApplying_ = false;
};

/// One line that is cut with an ellipsis in its middle where room is short; the whole text is then its tool tip.
class ElidedLabel : public Label {
    Q_OBJECT

public:
    explicit ElidedLabel(Role role, QWidget* parent = nullptr);

    void setFullText(const QString& text);
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString fullText_;
};

#pragma once

#include <QWidget>

class Field;
class Label;
class QPlainTextEdit;

/// Finds words in a text that is read: a field, how many places there are, and the steps between them. Escape puts
/// the keys back into the text.
class TextFindBar : public QWidget {
    Q_OBJECT

public:
    explicit TextFindBar(QPlainTextEdit& text, QWidget* parent = nullptr);

    /// Puts the keys into the field, with its words selected.
    void start();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void findAgain();
    void step(bool isBackward);
    void showCount();

    QPlainTextEdit* text_;
    Field* field_;
    Label* count_;
};

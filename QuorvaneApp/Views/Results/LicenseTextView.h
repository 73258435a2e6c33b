#pragma once

#include <QWidget>

class Label;
class QPlainTextEdit;

/// A license text to read, with the words marked that stand in no standard text of the licenses it reads as. A line above it says
/// what the marks mean, when there are any.
class LicenseTextView : public QWidget {
    Q_OBJECT

public:
    explicit LicenseTextView(QWidget* parent = nullptr);

    void setText(const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void mark();

    Label* legend_;
    QPlainTextEdit* text_;
};

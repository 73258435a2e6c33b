#pragma once

#include <QList>
#include <QWidget>

class Label;
class QComboBox;
class QPlainTextEdit;
class TextFindBar;
class QToolButton;

/// A license text to read, its lines kept as they are, with the words marked that stand in no standard text of the
/// licenses it reads as. Above it a line that names these licenses, says what the marks mean and leads from one to
/// the next, when there are any; the files that the text was put together from, when there are several; and a field that finds words.
class LicenseTextView : public QWidget {
    Q_OBJECT

public:
    explicit LicenseTextView(QWidget* parent = nullptr);

    void setText(const QString& text);
    /// Puts the keys into the field that finds words.
    void startFinding();

protected:
    void changeEvent(QEvent* event) override;

private:
    void mark();
    void listParts();
    void goToNextMark();
    void goTo(int position);

    QWidget* legend_;
    Label* meaning_;
    QToolButton* nextMark_;
    QComboBox* parts_;
    QPlainTextEdit* text_;
    TextFindBar* find_;
    QList<int> marks_;  ///< where they begin
};

#pragma once

#include <QLineEdit>

/// A line of text whose placeholder stays legible: not every desktop's palette has a fitting colour for it.
class Field : public QLineEdit {
    Q_OBJECT

public:
    explicit Field(const QString& text = {}, QWidget* parent = nullptr);

    /// Adds the button that empties the field.
    void addClearButton();

protected:
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;

private:
    void mendPlaceholder();

    bool isMending_ = false;
};

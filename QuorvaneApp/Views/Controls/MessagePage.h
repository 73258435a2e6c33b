#pragma once

#include <QWidget>

class Label;
class QVBoxLayout;

/// A page that has nothing to show, and says why in a heading, a sentence, and perhaps with a button.
class MessagePage : public QWidget {
    Q_OBJECT

public:
    explicit MessagePage(const QString& heading = {}, const QString& sentence = {},
                         QWidget* parent = nullptr);

    void setMessage(const QString& heading, const QString& sentence);
    /// The page owns the button from now on.
    void addButton(QWidget& button);

private:
    Label* heading_;
    Label* sentence_;
    QVBoxLayout* layout_;
};

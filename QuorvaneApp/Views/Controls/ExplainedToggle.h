#pragma once

#include <QWidget>

class QCheckBox;

/// A check box with a sentence below it that says what it means; screen readers are told both.
class ExplainedToggle : public QWidget {
    Q_OBJECT

public:
    ExplainedToggle(const QString& title, const QString& explanation, QWidget* parent = nullptr);

protected:
    QCheckBox& box() { return *box_; }

private:
    QCheckBox* box_;
};

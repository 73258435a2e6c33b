#pragma once

#include <QWidget>

class ElidedLabel;
class QHBoxLayout;
class QProgressBar;

/// A line that tells how far something is: a bar, words, and perhaps a button.
class ProgressRow : public QWidget {
    Q_OBJECT

public:
    /// The bar is told to screen readers by `barName`.
    explicit ProgressRow(const QString& barName, QWidget* parent = nullptr);

    /// A `total` of 0 means that nobody knows how much there is.
    void showProgress(std::size_t done, std::size_t total, const QString& words);
    /// The row owns the button from now on.
    void addButton(QWidget& button);

private:
    QProgressBar* bar_;
    ElidedLabel* words_;
    QHBoxLayout* layout_;
};

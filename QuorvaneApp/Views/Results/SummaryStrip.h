#pragma once

#include <QWidget>

class AppModel;
class Label;
class QHBoxLayout;

/// The counts of what the reports will hold, and how many dev-only packages they leave out.
class SummaryStrip : public QWidget {
    Q_OBJECT

public:
    explicit SummaryStrip(AppModel& model, QWidget* parent = nullptr);

    /// What the counts alone need, without the packages that are left out.
    int leastWidth() const;
    /// Leaves out what has no place in this width.
    void setRoom(int width);

private:
    struct Figure {
        Label* number;
        Label* words;
    };
    Figure addFigure(QHBoxLayout& layout);
    static void show(const Figure& figure, std::size_t count, const QString& one, const QString& several);
    void showCounts();

    AppModel* model_;
    Figure total_, needsReview_, copyleft_, unknown_;
    Label* leftOut_;
    std::size_t leftOutCount_ = 0;
};

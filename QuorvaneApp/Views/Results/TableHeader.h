#pragma once

#include <QHeaderView>

/// The headings of a table, for the keyboard, too: Left and Right go from one to the next, Space and Return sort by
/// it, and again the other way round, Shift with Left and Right makes it narrower and wider.
class TableHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

    /// What the words of the heading need, when the table is not sorted by it.
    int headingWidth(int section) const;

Q_SIGNALS:
    /// The user made a column narrower or wider with the keys.
    void sectionChosen(int section, int width);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    void goBy(int step);
    void sortBySection();

    int section_ = 0;  ///< where the keys are
};

#pragma once

#include "QuorvaneApp/Model/DependencyFilter.h"

#include <vector>

#include <QListWidget>

class AppModel;

/// The filters, each with the number of packages that it passes: all, three questions, and the ecosystems.
class Sidebar : public QListWidget {
    Q_OBJECT

public:
    explicit Sidebar(AppModel& model, QWidget* parent = nullptr);

    QSize sizeHint() const override;

private:
    void rebuild();
    void addHeading(const QString& text);
    void addFilter(const DependencyFilter& filter, const QString& text);
    void showFilter();
    void chooseFilter();

    AppModel* model_;
    std::vector<DependencyFilter> filters_;  ///< by the position that each item carries
};

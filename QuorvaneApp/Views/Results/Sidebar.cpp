#include "QuorvaneApp/Views/Results/Sidebar.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Results/SidebarDelegate.h"

#include <QSignalBlocker>

Sidebar::Sidebar(AppModel& model, QWidget* parent) : QListWidget(parent), model_(&model) {
    setObjectName(QStringLiteral("sidebar"));
    setAccessibleName(tr("Filters"));
    setItemDelegate(new SidebarDelegate(this));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSpacing(0);
    viewport()->setBackgroundRole(QPalette::Window);
    connect(model_, &AppModel::projectChanged, this, &Sidebar::rebuild);
    connect(model_, &AppModel::rowsChanged, this, &Sidebar::showFilter);
    connect(this, &QListWidget::currentItemChanged, this, &Sidebar::chooseFilter);
    rebuild();
}

QSize Sidebar::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 26, QListWidget::sizeHint().height()};
}

void Sidebar::rebuild() {
    // Filling the list moves its current item, which would choose a filter.
    const QSignalBlocker quiet(this);
    clear();
    filters_.clear();
    addHeading(tr("Packages"));
    addFilter(DependencyFilter::all(), tr("All"));
    addFilter(DependencyFilter::needsReview(), tr("Needs review"));
    addFilter(DependencyFilter::copyleft(), tr("Copyleft"));
    addFilter(DependencyFilter::unknown(), tr("Unknown"));
    const std::vector<ScanKit::Ecosystem> ecosystems = model_->ecosystems();
    if (!ecosystems.empty()) {
        addHeading(tr("Ecosystems"));
    }
    for (const ScanKit::Ecosystem ecosystem : ecosystems) {
        addFilter(DependencyFilter::ecosystem(ecosystem), Texts::fromUtf8(ScanKit::label(ecosystem)));
    }
    showFilter();
}

void Sidebar::addHeading(const QString& text) {
    auto* const item = new QListWidgetItem(text, this);
    item->setFlags(Qt::NoItemFlags);
    item->setData(SidebarDelegate::isHeadingRole, true);
}

void Sidebar::addFilter(const DependencyFilter& filter, const QString& text) {
    auto* const item = new QListWidgetItem(text, this);
    item->setData(SidebarDelegate::filterRole, static_cast<int>(filters_.size()));
    filters_.push_back(filter);
    // Before the first scan there are filters, but nothing to count.
    if (!model_->project()) {
        return;
    }
    const auto count = static_cast<std::size_t>(model_->project()->count(filter));
    item->setData(SidebarDelegate::countRole, Texts::number(count));
    item->setData(Qt::AccessibleTextRole,
                  tr("%1, %2").arg(text, Texts::counted(count, tr("package"), tr("packages"))));
}

void Sidebar::showFilter() {
    const QSignalBlocker quiet(this);
    for (int row = 0; row < count(); ++row) {
        const QVariant position = item(row)->data(SidebarDelegate::filterRole);
        if (position.isValid() && filters_[position.toUInt()] == model_->filter()) {
            setCurrentRow(row);
        }
    }
    viewport()->update();
}

void Sidebar::chooseFilter() {
    const QVariant position = currentItem() ? currentItem()->data(SidebarDelegate::filterRole) : QVariant();
    if (position.isValid()) {
        model_->setFilter(filters_[position.toUInt()]);
    }
}

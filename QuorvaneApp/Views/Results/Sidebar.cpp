#include "QuorvaneApp/Views/Results/Sidebar.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Results/SidebarDelegate.h"

#include <QScrollBar>
#include <QSignalBlocker>

Sidebar::Sidebar(AppModel& model, QWidget* parent) : QListWidget(parent), model_(&model) {
    setObjectName(QStringLiteral("sidebar"));
    setAccessibleName(QStringLiteral("Filters"));
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

/// As wide as its longest line with its count, so that neither is cut when the counts have five digits.
QSize Sidebar::sizeHint() const {
    return {sizeHintForColumn(0) + verticalScrollBar()->sizeHint().width(), fontMetrics().height() * 8};
}

void Sidebar::rebuild() {
    // Filling the list moves its current item, which would choose a filter.
    const QSignalBlocker quiet(this);
    clear();
    filters_.clear();
    addHeading(QStringLiteral("Packages"));
    addFilter(DependencyFilter::all(), QStringLiteral("All"));
    addFilter(DependencyFilter::needsReview(), QStringLiteral("Needs review"));
    addFilter(DependencyFilter::copyleft(), QStringLiteral("Copyleft"));
    addFilter(DependencyFilter::unknown(), QStringLiteral("Unknown"));
    addFilter(DependencyFilter::devOnly(), QStringLiteral("Dev-only"));
    const std::vector<ScanKit::Ecosystem> ecosystems = model_->ecosystems();
    if (!ecosystems.empty()) {
        addHeading(QStringLiteral("Ecosystems"));
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
                  QStringLiteral("%1, %2").arg(
                      text, Texts::counted(count, QStringLiteral("package"), QStringLiteral("packages"))));
}

void Sidebar::showFilter() {
    const QSignalBlocker quiet(this);
    setCurrentRow(-1);
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

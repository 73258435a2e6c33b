#include "QuorvaneApp/Views/Results/ResultsView.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/MessagePage.h"
#include "QuorvaneApp/Views/Results/DependencyTable.h"
#include "QuorvaneApp/Views/Results/DetailPane.h"
#include "QuorvaneApp/Views/Results/Sidebar.h"

#include <utility>

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QResizeEvent>
#include <QSplitter>
#include <QStackedWidget>

namespace {

/// In characters: narrower than this, the details go below the table.
constexpr int widthForThreeColumns = 165;

QSplitter* makeSplitter(Qt::Orientation orientation) {
    auto* const splitter = new QSplitter(orientation);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    return splitter;
}

}  // namespace

ResultsView::ResultsView(AppModel& model, const AppCommands& commands,
                         std::function<void(const QString&)> openLink, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      sidebar_(new Sidebar(model)),
      table_(new DependencyTable(model)),
      detailPane_(new DetailPane(model, std::move(openLink))),
      message_(new MessagePage),
      showAll_(new Button(tr("Show All Packages"))),
      rescan_(new CommandButton(*commands.action(Command::rescan))),
      openFolder_(new CommandButton(*commands.action(Command::openFolder))),
      middle_(new QStackedWidget),
      outer_(makeSplitter(Qt::Horizontal)),
      inner_(makeSplitter(Qt::Horizontal)) {
    showAll_->setObjectName(QStringLiteral("showAllButton"));
    message_->setObjectName(QStringLiteral("emptyState"));
    for (QWidget* const button : {static_cast<QWidget*>(showAll_), static_cast<QWidget*>(rescan_),
                                  static_cast<QWidget*>(openFolder_)}) {
        message_->addButton(*button);
    }
    middle_->addWidget(table_);
    middle_->addWidget(message_);
    inner_->addWidget(middle_);
    inner_->addWidget(detailPane_);
    inner_->setStretchFactor(0, 1);
    inner_->setStretchFactor(1, 0);
    outer_->addWidget(sidebar_);
    outer_->addWidget(inner_);
    outer_->setStretchFactor(0, 0);
    outer_->setStretchFactor(1, 1);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(outer_);

    // Both at once: the user sees that nothing is left, not which of the two hides it.
    connect(showAll_, &QPushButton::clicked, model_, [this] {
        model_->setSearch({});
        model_->setFilter(DependencyFilter::all());
    });
    connect(model_, &AppModel::rowsChanged, this, &ResultsView::showState);
    connect(model_, &AppModel::scanningChanged, this, &ResultsView::showState);
    connect(model_, &AppModel::problemChanged, this, &ResultsView::showState);
    connect(model_, &AppModel::projectChanged, this, &ResultsView::showState);
    showState();
}

void ResultsView::goToRows() {
    table_->setFocus(Qt::ShortcutFocusReason);
    if (!table_->selectionModel()->hasSelection() && !model_->rows().empty()) {
        table_->selectRow(0);
    }
}

void ResultsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isNarrow = width() < widthForThreeColumns * fontMetrics().averageCharWidth();
    const Qt::Orientation orientation = isNarrow ? Qt::Vertical : Qt::Horizontal;
    // As long as the arrangement stays, so does the width that the user gave the details.
    if (isArranged_ && inner_->orientation() == orientation) {
        return;
    }
    isArranged_ = true;
    inner_->setOrientation(orientation);
    const int details = isNarrow ? height() / 2 : fontMetrics().averageCharWidth() * 46;
    inner_->setSizes({(isNarrow ? height() : width()) - details, details});
}

/// From the most to the least certain: rows, no result yet, an empty result, rows that are all hidden.
void ResultsView::showState() {
    if (!model_->rows().empty()) {
        middle_->setCurrentWidget(table_);
        if (awaitsFirstRows_) {
            table_->setFocus();
        }
        awaitsFirstRows_ = false;
        return;
    }
    awaitsFirstRows_ = awaitsFirstRows_ || model_->result() == nullptr;
    if (model_->result() == nullptr && model_->scanning()) {
        explain(tr("Scanning…"), tr("The packages appear here as soon as the scan is done."), nullptr);
    } else if (model_->result() == nullptr && model_->problem()) {
        explain(tr("The folder could not be scanned"), *model_->problem(), openFolder_);
    } else if (model_->result() == nullptr) {
        explain(tr("Not scanned yet"), tr("The scan was cancelled. Nothing is known about this folder yet."),
                rescan_);
    } else if (model_->result()->dependencies.empty()) {
        explain(
            tr("No dependencies found"),
            tr("Quorvane looks for Package.resolved, package.json with its lockfile, requirements and the lockfiles of Python packages, and virtual environments, in this folder and four levels below it."),
            openFolder_);
    } else {
        explain(tr("No matching packages"), tr("No package passes the filter and the search together."),
                showAll_);
    }
}

void ResultsView::explain(const QString& heading, const QString& sentence, QWidget* button) {
    message_->setMessage(heading, sentence);
    for (QWidget* const one : {static_cast<QWidget*>(showAll_), static_cast<QWidget*>(rescan_),
                               static_cast<QWidget*>(openFolder_)}) {
        one->setVisible(one == button);
    }
    middle_->setCurrentWidget(message_);
}

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

#include <algorithm>
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

WindowMemory::Part partOf(const QSplitter& details) {
    return details.orientation() == Qt::Vertical ? WindowMemory::Part::detailsBelow
                                                 : WindowMemory::Part::detailsBeside;
}

struct Words {
    QString heading;
    QString sentence;
};

/// What it means that a filter passes nothing.
Words wordsForNone(const DependencyFilter& filter) {
    switch (filter.kind()) {
        case DependencyFilter::Kind::needsReview:
            return {QStringLiteral("Nothing needs review"),
                    QStringLiteral("No package of this project has a flag that asks for one.")};
        case DependencyFilter::Kind::copyleft:
            return {QStringLiteral("No copyleft"),
                    QStringLiteral("No package of this project has a copyleft license.")};
        case DependencyFilter::Kind::unknown:
            return {QStringLiteral("Nothing unknown"),
                    QStringLiteral("The license of each package of this project is known.")};
        case DependencyFilter::Kind::devOnly:
            return {QStringLiteral("No dev-only packages"),
                    QStringLiteral("No package of this project is needed for its development alone.")};
        case DependencyFilter::Kind::ecosystem:
        case DependencyFilter::Kind::all:
            break;
    }
    return {QStringLiteral("No packages"), QStringLiteral("This project has no packages of this kind.")};
}

}  // namespace

ResultsView::ResultsView(AppModel& model, const AppCommands& commands,
                         std::function<void(const QString&)> openLink, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      sidebar_(new Sidebar(model)),
      table_(new DependencyTable(
          model, {commands.action(Command::openSource), commands.action(Command::revealPackage)})),
      detailPane_(new DetailPane(model, std::move(openLink))),
      message_(new MessagePage),
      showAll_(new Button(QStringLiteral("Show All Packages"))),
      rescan_(new CommandButton(*commands.action(Command::rescan))),
      openFolder_(new CommandButton(*commands.action(Command::openFolder))),
      middle_(new QStackedWidget),
      outer_(makeSplitter(Qt::Horizontal)),
      inner_(makeSplitter(Qt::Horizontal)),
      memory_(model.persist()) {
    showAll_->setObjectName(QStringLiteral("showAllButton"));
    message_->setObjectName(QStringLiteral("emptyState"));
    message_->setFocusPolicy(Qt::ClickFocus);
    for (QWidget* const button : {static_cast<QWidget*>(showAll_), static_cast<QWidget*>(rescan_),
                                  static_cast<QWidget*>(openFolder_)}) {
        message_->addButton(*button);
    }
    middle_->addWidget(table_);
    middle_->addWidget(message_);
    inner_->addWidget(middle_);
    inner_->addWidget(detailPane_);
    outer_->addWidget(sidebar_);
    outer_->addWidget(inner_);
    outer_->setStretchFactor(0, 0);
    outer_->setStretchFactor(1, 1);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(outer_);
    // A splitter tells of this only when it is dragged.
    connect(outer_, &QSplitter::splitterMoved, this, &ResultsView::rememberSizes);
    connect(inner_, &QSplitter::splitterMoved, this, &ResultsView::rememberSizes);
    outer_->restoreState(memory_.remembered(WindowMemory::Part::sidebar));

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
        table_->selectOnly(0);
    }
}

void ResultsView::awaitRows() {
    message_->setFocus(Qt::OtherFocusReason);
}

void ResultsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isNarrow = width() < widthForThreeColumns * fontMetrics().averageCharWidth();
    const Qt::Orientation orientation = isNarrow ? Qt::Vertical : Qt::Horizontal;
    // As long as the arrangement stays, so does the size that the user gave the details.
    if (!isArranged_ || inner_->orientation() != orientation) {
        isArranged_ = true;
        inner_->setOrientation(orientation);
        arrange();
    }
}

/// As the user left it in this arrangement; else what the details need beside the table, and below it what leaves
/// the rows the greater part.
void ResultsView::arrange() {
    const bool isNarrow = inner_->orientation() == Qt::Vertical;
    // Beside the table they keep their width; below it both give way, and keep their shares: a splitter asks only
    // who stretches at all.
    inner_->setStretchFactor(0, 1);
    inner_->setStretchFactor(1, isNarrow ? 1 : 0);
    const QByteArray remembered = memory_.remembered(partOf(*inner_));
    if (!remembered.isEmpty() && inner_->restoreState(remembered)) {
        return;
    }
    const int room = isNarrow ? height() : width();
    const int beside = std::max(width() / 4, fontMetrics().averageCharWidth() * 46);
    const int details = isNarrow ? height() * 2 / 5 : beside;
    inner_->setSizes({room - details, details});
}

void ResultsView::rememberSizes() {
    memory_.save(WindowMemory::Part::sidebar, outer_->saveState());
    memory_.save(partOf(*inner_), inner_->saveState());
}

/// From the most to the least certain: rows, no result yet, an empty result, rows that are all hidden.
void ResultsView::showState() {
    if (!model_->rows().empty()) {
        // Asked of the window, which may not be the active one yet, or any more.
        const bool hasKeys = window()->focusWidget() == message_;
        middle_->setCurrentWidget(table_);
        // Whoever types in the search meanwhile goes on typing there.
        if (hasKeys) {
            table_->setFocus();
        }
        return;
    }
    if (model_->result() == nullptr && model_->scanning()) {
        explain(QStringLiteral("Scanning…"),
                QStringLiteral("The packages appear here as soon as the scan is done."), nullptr);
    } else if (model_->result() == nullptr && model_->problem()) {
        explain(QStringLiteral("The folder could not be scanned"), *model_->problem(), openFolder_);
    } else if (model_->result() == nullptr) {
        explain(QStringLiteral("Not scanned yet"),
                QStringLiteral("The scan was cancelled. Nothing is known about this folder yet."), rescan_);
    } else if (model_->result()->dependencies.empty()) {
        explain(
            QStringLiteral("No dependencies found"),
            QStringLiteral(
                "Quorvane looks for Package.resolved, package.json with its lockfile, requirements and the lockfiles of Python packages, and virtual environments, in this folder and four levels below it."),
            openFolder_);
    } else {
        explainHidden();
    }
}

/// That there is none of a kind is good news, or at least an answer; a search that finds nothing is neither.
void ResultsView::explainHidden() {
    if (model_->project()->count(model_->filter()) == 0) {
        const auto [heading, sentence] = wordsForNone(model_->filter());
        explain(heading, sentence, showAll_);
    } else {
        explain(QStringLiteral("No matching packages"),
                QStringLiteral("No package passes the filter and the search together."), showAll_);
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

#include "QuorvaneApp/Views/Results/DependencyFacts.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Model/WebLink.h"
#include "QuorvaneApp/Views/Controls/FlagChip.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Controls/LinkButton.h"
#include "QuorvaneApp/Views/Results/Facts.h"

#include <algorithm>
#include <utility>

#include <QGridLayout>
#include <QVBoxLayout>

namespace {

/// Wide enough for most names and addresses.
constexpr int charactersForOneColumn = 42;

/// A fact is there to be copied into a letter or a ticket.
Label* selectable(const QString& text, const QString& title) {
    auto* const label = new Label(Label::Role::body, text);
    label->setWrapping(true);
    label->makeSelectable();
    label->setAccessibleName(title);
    label->setAccessibleDescription(text);
    return label;
}

}  // namespace

DependencyFacts::DependencyFacts(std::function<void(const QString&)> openLink, QWidget* parent)
    : ScrolledColumn(QStringLiteral("facts"), QStringLiteral("Facts about the package"), parent),
      openLink_(std::move(openLink)) {}

void DependencyFacts::show(const ScanKit::Dependency& dependency, const QString& namedIn) {
    QVBoxLayout* const column = newColumn();
    addFlags(*column, dependency);
    addNotes(*column, dependency);
    titled_.clear();
    grid_ = new QGridLayout;
    grid_->setHorizontalSpacing(18);
    grid_->setVerticalSpacing(10);
    column->addLayout(grid_);
    addFacts(dependency, namedIn);
    arrange();
    setColumn(column);
}

void DependencyFacts::resizeEvent(QResizeEvent* event) {
    ScrolledColumn::resizeEvent(event);
    arrange();
}

/// Moves the titled lines into as many columns as the width has room for.
void DependencyFacts::arrange() {
    if (grid_ == nullptr) {
        return;
    }
    const int columns =
        std::clamp(viewport()->width() / (charactersForOneColumn * fontMetrics().averageCharWidth()), 1, 3);
    for (std::size_t i = 0; i < titled_.size(); ++i) {
        grid_->removeWidget(titled_[i]);
        const int position = static_cast<int>(i);
        grid_->addWidget(titled_[i], position / columns, position % columns, Qt::AlignTop);
    }
    for (int column = 0; column < 3; ++column) {
        grid_->setColumnStretch(column, column < columns ? 1 : 0);
    }
}

void DependencyFacts::addFlags(QVBoxLayout& column, const ScanKit::Dependency& dependency) {
    if (dependency.flags.empty()) {
        return;
    }
    auto* const chips = new QVBoxLayout;
    chips->setSpacing(4);
    for (const ScanKit::Flag flag : dependency.flags) {
        chips->addWidget(new FlagChip(flag));
    }
    column.addLayout(chips);
}

void DependencyFacts::addNotes(QVBoxLayout& column, const ScanKit::Dependency& dependency) {
    for (const std::string& note : dependency.notes) {
        column.addWidget(selectable(Texts::fromUtf8(note), QStringLiteral("Note")));
    }
}

void DependencyFacts::addFacts(const ScanKit::Dependency& dependency, const QString& namedIn) {
    for (const Facts::Fact& fact : Facts::of(dependency)) {
        addTitled(fact.title, selectable(fact.text, fact.title));
    }
    if (!namedIn.isEmpty()) {
        addTitled(QStringLiteral("Named in"), selectable(namedIn, QStringLiteral("Named in")));
    }
    if (dependency.source && !dependency.source->empty()) {
        addTitled(QStringLiteral("Source"), makeSource(*dependency.source));
    }
}

void DependencyFacts::addTitled(const QString& title, QWidget* content) {
    auto* const group = new QWidget;
    auto* const lines = new QVBoxLayout(group);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(1);
    lines->addWidget(new Label(Label::Role::caption, title));
    lines->addWidget(content);
    titled_.push_back(group);
}

/// Only a web address becomes a link: anything else that a package names as its source is just shown.
QWidget* DependencyFacts::makeSource(const std::string& source) {
    const QString shown = Texts::oneLine(Texts::fromUtf8(source));
    const auto address = webLink(source);
    if (!address) {
        return selectable(shown, QStringLiteral("Source"));
    }
    auto* const link = new LinkButton(shown);
    link->setObjectName(QStringLiteral("sourceLink"));
    connect(link, &QAbstractButton::clicked, this, [this, address = *address] { openLink_(address); });
    return link;
}

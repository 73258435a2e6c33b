#include "QuorvaneApp/Views/Results/WarningStrip.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Model/WarningRemedy.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/FittedScrollArea.h"
#include "QuorvaneApp/Views/Controls/Strip.h"

#include <algorithm>
#include <optional>

#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// A large project may have a warning a file: they must leave the table its room.
constexpr std::size_t shownWhenFolded = 2;
constexpr double partWhenFolded = 0.25;  ///< of the window's height
constexpr double partWhenUnfolded = 0.4;

std::optional<Command> commandFor(WarningRemedy remedy) {
    switch (remedy) {
        case WarningRemedy::none:
            return std::nullopt;
        case WarningRemedy::addCheckouts:
            return Command::addCheckouts;
        case WarningRemedy::choosePythonEnvironment:
            return Command::choosePythonEnvironment;
        case WarningRemedy::rescan:
            return Command::rescan;
    }
    return std::nullopt;
}

}  // namespace

WarningStrip::WarningStrip(AppModel& model, const AppCommands& commands, QWidget* parent)
    : QWidget(parent),
      model_(&model),
      commands_(&commands),
      area_(new FittedScrollArea),
      toggle_(new QPushButton) {
    setObjectName(QStringLiteral("warnings"));
    setAccessibleName(QStringLiteral("Warnings"));
    area_->setAccessibleName(QStringLiteral("Warnings"));
    toggle_->setObjectName(QStringLiteral("warningsToggle"));
    toggle_->setFlat(true);
    connect(toggle_, &QPushButton::clicked, this, [this] {
        isUnfolded_ = !isUnfolded_;
        rebuild();
    });
    // Below what scrolls, so that it is always in sight.
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(area_);
    column->addWidget(toggle_, 0, Qt::AlignHCenter);
    connect(model_, &AppModel::warningsChanged, this, &WarningStrip::showWarnings);
    rebuild();
}

/// Another scan mostly raises the same warnings: then nothing moves, and the focus stays where it is.
void WarningStrip::showWarnings() {
    std::vector<ScanKit::ScanWarning> warnings;
    for (const ScanKit::ScanWarning* const warning : model_->warnings()) {
        warnings.push_back(*warning);
    }
    if (warnings != shown_) {
        isUnfolded_ = isUnfolded_ && !warnings.empty();
        shown_ = std::move(warnings);
        rebuild();
    }
}

void WarningStrip::rebuild() {
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    const std::size_t count = isUnfolded_ ? shown_.size() : std::min(shown_.size(), shownWhenFolded);
    for (std::size_t i = 0; i < count; ++i) {
        addWarning(*column, shown_[i]);
    }
    area_->setWidget(page);
    // Whoever uses the keys must be able to scroll what is longer than the strip.
    area_->setFocusPolicy(isUnfolded_ ? Qt::StrongFocus : Qt::NoFocus);
    const std::size_t folded = shown_.size() - std::min(shown_.size(), shownWhenFolded);
    toggle_->setVisible(folded > 0);
    toggle_->setText(isUnfolded_
                         ? QStringLiteral("Show fewer warnings")
                         : QStringLiteral("Show %1").arg(Texts::counted(
                               folded, QStringLiteral("more warning"), QStringLiteral("more warnings"))));
    setVisible(!shown_.empty());
    limitHeight();
}

void WarningStrip::addWarning(QVBoxLayout& column, const ScanKit::ScanWarning& warning) {
    auto* const strip = new Strip(ScanKit::Flag::Severity::medium);
    strip->setSentence(Texts::fromUtf8(warning.sentence));
    if (const std::optional<Command> command = commandFor(remedyOf(warning.kind))) {
        strip->addButton(*new CommandButton(*commands_->action(*command)));
    }
    strip->addDismissButton();
    // What is put away takes its button with it, so it waits until the click is over.
    connect(
        strip, &Strip::dismissed, model_,
        [model = model_, sentence = warning.sentence] { model->putAwayWarning(sentence); },
        Qt::QueuedConnection);
    column.addWidget(strip);
}

void WarningStrip::setWindowHeight(int height) {
    windowHeight_ = height;
    limitHeight();
}

void WarningStrip::limitHeight() {
    const double part = isUnfolded_ ? partWhenUnfolded : partWhenFolded;
    area_->setGreatestHeight(static_cast<int>(windowHeight_ * part));
}

#include "QuorvaneApp/Views/Results/WarningStrip.h"

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Model/WarningRemedy.h"
#include "QuorvaneApp/Views/Controls/CommandButton.h"
#include "QuorvaneApp/Views/Controls/Strip.h"

#include <algorithm>
#include <optional>

#include <QPushButton>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace {

/// A large project may have a warning a file: they must leave the table its room.
constexpr std::size_t shownWhenFolded = 2;
constexpr int greatestHeight = 190;

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
    : QScrollArea(parent), model_(&model), commands_(&commands) {
    setObjectName(QStringLiteral("warnings"));
    setAccessibleName(tr("Warnings"));
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(model_, &AppModel::projectChanged, this, [this] {
        isUnfolded_ = false;
        rebuild();
    });
    rebuild();
}

void WarningStrip::rebuild() {
    const std::size_t count = model_->result() == nullptr ? 0 : model_->result()->warnings.size();
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    const std::size_t shown = isUnfolded_ ? count : std::min(count, shownWhenFolded);
    for (std::size_t i = 0; i < shown; ++i) {
        addWarning(*column, model_->result()->warnings[i]);
    }
    if (count > shownWhenFolded) {
        addToggle(*column, count - shownWhenFolded);
    }
    setWidget(page);
    setVisible(count > 0);
    // Whoever uses the keys must be able to scroll what is longer than the strip.
    setFocusPolicy(isUnfolded_ ? Qt::StrongFocus : Qt::NoFocus);
    fitHeight();
}

void WarningStrip::addWarning(QVBoxLayout& column, const ScanKit::ScanWarning& warning) {
    auto* const strip = new Strip(ScanKit::Flag::Severity::medium);
    strip->setSentence(Texts::fromUtf8(warning.sentence));
    if (const std::optional<Command> command = commandFor(remedyOf(warning.kind))) {
        strip->addButton(*new CommandButton(*commands_->action(*command)));
    }
    column.addWidget(strip);
}

void WarningStrip::addToggle(QVBoxLayout& column, std::size_t folded) {
    auto* const toggle = new QPushButton(
        isUnfolded_ ? tr("Show fewer warnings")
                    : tr("Show %1").arg(Texts::counted(folded, tr("more warning"), tr("more warnings"))));
    toggle->setObjectName(QStringLiteral("warningsToggle"));
    toggle->setFlat(true);
    // Rebuilding deletes the button that was pressed, so it waits until the click is over.
    connect(
        toggle, &QPushButton::clicked, this,
        [this] {
            isUnfolded_ = !isUnfolded_;
            rebuild();
        },
        Qt::QueuedConnection);
    column.addWidget(toggle, 0, Qt::AlignHCenter);
}

QSize WarningStrip::sizeHint() const {
    return {QScrollArea::sizeHint().width(), height()};
}

void WarningStrip::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        fitHeight();
    }
}

/// As tall as its sentences need at this width, up to a limit; then it scrolls.
void WarningStrip::fitHeight() {
    if (widget() == nullptr) {
        return;
    }
    const QLayout& layout = *widget()->layout();
    const int needed =
        layout.hasHeightForWidth() ? layout.heightForWidth(viewport()->width()) : layout.sizeHint().height();
    setFixedHeight(std::min(needed, greatestHeight));
}

#include "QuorvaneApp/Views/Dialogs/UpdateWindow.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/ProgramHeading.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

/// On one line, its end left out: a feed may call a version by a text that is wider than any screen.
QString shortened(const QString& text, qsizetype longest) {
    const QString line = Texts::oneLine(text);
    return line.size() > longest ? line.left(longest - 1) + QStringLiteral("…") : line;
}

Button* makeButton(const char* objectName, const QString& text) {
    auto* const button = new Button(text);
    button->setObjectName(QLatin1StringView(objectName));
    return button;
}

}  // namespace

UpdateWindow::UpdateWindow(const AvailableUpdate& update, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("updateWindow"));
    setWindowTitle(QStringLiteral("Software Update"));
    // Every way to close is one choice: Escape and the title bar leave it as it began.
    connect(this, &QDialog::finished, this, [this] { Q_EMIT chosen(choice_); });

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 20, 22, 18);
    layout->setSpacing(6);
    layout->addWidget(makeHeading(update));
    layout->addSpacing(10);
    if (update.releaseNotes.isEmpty()) {
        layout->addStretch();
        setMinimumWidth(fontMetrics().averageCharWidth() * 84);
    } else {
        layout->addWidget(makeNotes(update), 1);
        resize(fontMetrics().averageCharWidth() * 84, fontMetrics().height() * 24);
    }
    layout->addSpacing(8);
    layout->addWidget(makeButtons(update.page.has_value()));
}

QWidget* UpdateWindow::makeHeading(const AvailableUpdate& update) {
    auto* const heading = new ProgramHeading(
        QStringLiteral("%1 %2 is available")
            .arg(QGuiApplication::applicationDisplayName(), shortened(update.shownVersion, 40)));
    heading->addLine(Label::Role::body,
                     QStringLiteral("You have version %1.").arg(QCoreApplication::applicationVersion()));
    Label* const page = heading->addLine(
        Label::Role::caption, update.page ? shortened(update.page->toDisplayString(), 80)
                                          : QStringLiteral("The announcement names no download page."));
    page->setObjectName(QStringLiteral("downloadPage"));
    page->makeSelectable();
    return heading;
}

QWidget* UpdateWindow::makeNotes(const AvailableUpdate& update) {
    auto* const notes = new QPlainTextEdit(Texts::withoutEndlessLines(update.releaseNotes));
    notes->setObjectName(QStringLiteral("releaseNotes"));
    notes->setAccessibleName(QStringLiteral("Release notes"));
    notes->setReadOnly(true);
    notes->setTabChangesFocus(true);
    notes->document()->setDocumentMargin(10);
    return notes;
}

QWidget* UpdateWindow::makeButtons(bool hasPage) {
    Button* const skip = makeButton("skipVersion", QStringLiteral("Skip This Version"));
    Button* const later = makeButton("remindLater", QStringLiteral("Remind Me Later"));
    Button* const open = makeButton("openPage", QStringLiteral("Open Download Page"));
    open->setEnabled(hasPage);
    // Return never skips a version.
    (hasPage ? open : later)->setDefault(true);
    connect(skip, &QPushButton::clicked, this, [this] { choose(UpdateChoice::skipVersion); });
    connect(later, &QPushButton::clicked, this, [this] { choose(UpdateChoice::remindLater); });
    connect(open, &QPushButton::clicked, this, [this] { choose(UpdateChoice::openPage); });

    auto* const buttons = new QWidget;
    auto* const layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(skip);
    layout->addStretch();
    layout->addWidget(later);
    layout->addWidget(open);
    return buttons;
}

void UpdateWindow::choose(UpdateChoice choice) {
    choice_ = choice;
    close();
}

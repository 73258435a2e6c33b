#include "QuorvaneApp/Views/Results/TextFindBar.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Field.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QToolButton>

namespace {

QToolButton* makeStep(Qt::ArrowType arrow, const QString& name, const QString& objectName) {
    auto* const button = new QToolButton;
    button->setObjectName(objectName);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAccessibleName(name);
    button->setToolTip(name);
    return button;
}

}  // namespace

TextFindBar::TextFindBar(QPlainTextEdit& text, QWidget* parent)
    : QWidget(parent), text_(&text), field_(new Field), count_(new Label(Label::Role::caption)) {
    field_->setObjectName(QStringLiteral("findInText"));
    field_->setPlaceholderText(QStringLiteral("Find in text"));
    field_->setAccessibleName(QStringLiteral("Find in text"));
    field_->addClearButton();
    field_->installEventFilter(this);
    count_->setObjectName(QStringLiteral("foundInText"));
    auto* const back = makeStep(Qt::UpArrow, QStringLiteral("Previous place"), QStringLiteral("findBack"));
    auto* const on = makeStep(Qt::DownArrow, QStringLiteral("Next place"), QStringLiteral("findOn"));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 4, 10, 4);
    layout->setSpacing(4);
    layout->addWidget(field_, 1);
    layout->addWidget(count_);
    layout->addWidget(back);
    layout->addWidget(on);
    connect(field_, &QLineEdit::textChanged, this, &TextFindBar::findAgain);
    connect(text_, &QPlainTextEdit::textChanged, this, &TextFindBar::showCount);
    connect(back, &QToolButton::clicked, this, [this] { step(true); });
    connect(on, &QToolButton::clicked, this, [this] { step(false); });
}

void TextFindBar::start() {
    field_->setFocus(Qt::ShortcutFocusReason);
    field_->selectAll();
}

bool TextFindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != field_ || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto* const key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            step(key->modifiers().testFlag(Qt::ShiftModifier));
            return true;
        case Qt::Key_Escape:
            field_->clear();
            text_->setFocus(Qt::ShortcutFocusReason);
            return true;
        default:
            return QWidget::eventFilter(watched, event);
    }
}

/// With every letter from where the selection begins, so that a word that still fits stays found.
void TextFindBar::findAgain() {
    QTextCursor cursor = text_->textCursor();
    cursor.setPosition(cursor.selectionStart());
    text_->setTextCursor(cursor);
    if (!field_->text().isEmpty()) {
        step(false);
    }
    showCount();
}

/// Behind the last place comes the first again.
void TextFindBar::step(bool isBackward) {
    const QTextDocument::FindFlags flags =
        isBackward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (field_->text().isEmpty() || text_->find(field_->text(), flags)) {
        return;
    }
    QTextCursor cursor = text_->textCursor();
    cursor.movePosition(isBackward ? QTextCursor::End : QTextCursor::Start);
    text_->setTextCursor(cursor);
    text_->find(field_->text(), flags);
}

void TextFindBar::showCount() {
    const QString words = field_->text();
    const auto places = static_cast<std::size_t>(
        words.isEmpty() ? 0 : text_->toPlainText().count(words, Qt::CaseInsensitive));
    count_->setVisible(!words.isEmpty());
    count_->setText(places == 0 ? QStringLiteral("Not found")
                                : Texts::counted(places, QStringLiteral("place"), QStringLiteral("places")));
}

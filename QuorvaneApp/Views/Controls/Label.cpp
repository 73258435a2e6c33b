#include "QuorvaneApp/Views/Controls/Label.h"

#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <array>

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>

namespace {

struct RoleRow {
    Label::Role value;
    double points;
    bool isBold;
    bool isSecondary;
};

constexpr std::array<RoleRow, 5> roleRows{{
    {Label::Role::body, 0, false, false},
    {Label::Role::strong, 0, true, false},
    {Label::Role::caption, -0.5, false, true},
    {Label::Role::heading, 3, true, false},
    {Label::Role::title, 9, true, false},
}};

const RoleRow& rowOf(Label::Role role) {
    return roleRows[static_cast<std::size_t>(role)];
}

}  // namespace

Label::Label(Role role, const QString& text, QWidget* parent) : QLabel(text, parent), role_(role) {
    setTextFormat(Qt::PlainText);
    setFont(Appearance::adjusted(font(), rowOf(role).points, rowOf(role).isBold));
    applyPalette();
}

void Label::makeSelectable() {
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

void Label::copy() {
    QGuiApplication::clipboard()->setText(hasSelectedText() ? selectedText() : text());
}

void Label::selectAll() {
    setSelection(0, static_cast<int>(text().size()));
}

void Label::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange) {
        applyPalette();
    }
    QLabel::changeEvent(event);
}

void Label::applyPalette() {
    // A palette that is set here comes back as a change of the palette.
    if (!rowOf(role_).isSecondary || isApplying_) {
        return;
    }
    isApplying_ = true;
    const QPalette base = parentWidget() == nullptr ? QPalette() : parentWidget()->palette();
    setPalette(Appearance::withSecondaryText(base));
    isApplying_ = false;
}

ElidedLabel::ElidedLabel(Role role, QWidget* parent) : Label(role, {}, parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setFullText(const QString& text) {
    fullText_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const bool isCut = fontMetrics().horizontalAdvance(fullText_) > width();
        setToolTip(isCut ? Texts::toolTip(fullText_) : QString());
    }
    return Label::event(event);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 6, fontMetrics().height()};
}

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(fullText_) + 2, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    // The middle goes: a path says most in its beginning and its end.
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(fullText_, Qt::ElideMiddle, width()));
}

#include "QuorvaneApp/Views/Controls/Strip.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QToolButton>

namespace {

constexpr int padding = 12;

}  // namespace

Strip::Strip(ScanKit::Flag::Severity severity, QWidget* parent)
    : QWidget(parent),
      severity_(severity),
      sentence_(new Label(Label::Role::body)),
      layout_(new QHBoxLayout(this)) {
    sentence_->setWrapping(true);
    sentence_->makeSelectable();
    layout_->setContentsMargins(padding + Appearance::glyphSize(fontMetrics()) + 8, 6, padding, 6);
    layout_->setSpacing(8);
    layout_->addWidget(sentence_, 1);
}

void Strip::setSeverity(ScanKit::Flag::Severity severity) {
    severity_ = severity;
    update();
}

void Strip::setSentence(const QString& sentence) {
    sentence_->setText(sentence);
    sentence_->setAccessibleName(sentence);
    setAccessibleName(sentence);
}

void Strip::addButton(QWidget& button) {
    layout_->addWidget(&button, 0, Qt::AlignVCenter);
}

void Strip::addDismissButton() {
    auto* const dismiss = new QToolButton;
    dismiss->setObjectName(QStringLiteral("dismissButton"));
    dismiss->setText(QStringLiteral("✕"));
    dismiss->setAutoRaise(true);
    dismiss->setFocusPolicy(Qt::TabFocus);
    dismiss->setAccessibleName(QStringLiteral("Dismiss"));
    dismiss->setToolTip(QStringLiteral("Dismiss"));
    connect(dismiss, &QToolButton::clicked, this, &Strip::dismissed);
    addButton(*dismiss);
}

void Strip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Appearance::severityBackground(severity_, palette()));
    painter.fillRect(QRect(0, height() - 1, width(), 1), Appearance::separator(palette()));
    const int size = Appearance::glyphSize(fontMetrics());
    painter.drawPixmap(padding, (height() - size) / 2,
                       Appearance::severityPixmap(severity_, size, devicePixelRatioF(),
                                                  Appearance::severityColor(severity_, palette())));
}

#include "QuorvaneApp/Views/Controls/ProgramHeading.h"

#include "QuorvaneApp/Views/Controls/Appearance.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int iconSize = 48;

}  // namespace

ProgramHeading::ProgramHeading(const QString& title, QWidget* parent)
    : QWidget(parent), lines_(new QVBoxLayout) {
    auto* const icon = new QLabel;
    icon->setPixmap(Appearance::applicationPixmap(iconSize, devicePixelRatioF()));
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(14);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addLayout(lines_, 1);
    lines_->setSpacing(3);
    addLine(Label::Role::heading, title)->setObjectName(QStringLiteral("headingTitle"));
}

Label* ProgramHeading::addLine(Label::Role role, const QString& text) {
    auto* const line = new Label(role, text);
    line->setWrapping(true);
    lines_->addWidget(line);
    return line;
}

#include "QuorvaneApp/Views/Controls/MessagePage.h"

#include "QuorvaneApp/Views/Controls/Label.h"

#include <QVBoxLayout>

MessagePage::MessagePage(const QString& heading, const QString& sentence, QWidget* parent)
    : QWidget(parent),
      heading_(new Label(Label::Role::heading)),
      sentence_(new Label(Label::Role::caption)),
      layout_(new QVBoxLayout(this)) {
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    layout_->setContentsMargins(24, 24, 24, 24);
    layout_->setSpacing(6);
    layout_->addStretch(2);
    for (Label* const label : {heading_, sentence_}) {
        label->setAlignment(Qt::AlignHCenter);
        label->setWrapping(true);
        layout_->addWidget(label);
    }
    layout_->addStretch(3);
    setMessage(heading, sentence);
}

void MessagePage::setMessage(const QString& heading, const QString& sentence) {
    heading_->setText(heading);
    heading_->setVisible(!heading.isEmpty());
    sentence_->setText(sentence);
    setAccessibleName(heading.isEmpty() ? sentence : heading);
    setAccessibleDescription(sentence);
}

void MessagePage::addButton(QWidget& button) {
    layout_->insertSpacing(layout_->count() - 1, 8);
    layout_->insertWidget(layout_->count() - 1, &button, 0, Qt::AlignHCenter);
}

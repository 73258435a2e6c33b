#include "QuorvaneApp/Views/Controls/ExplainedToggle.h"

#include "QuorvaneApp/Views/Controls/Label.h"

#include <QCheckBox>
#include <QVBoxLayout>

ExplainedToggle::ExplainedToggle(const QString& title, const QString& explanation, QWidget* parent)
    : QWidget(parent), box_(new QCheckBox(title)) {
    box_->setAccessibleDescription(explanation);
    auto* const words = new Label(Label::Role::caption, explanation);
    words->setWrapping(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(box_);
    layout->addWidget(words);
}

#include "QuorvaneApp/Views/DevPackagesToggle.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Views/Label.h"

#include <QCheckBox>
#include <QVBoxLayout>

DevPackagesToggle::DevPackagesToggle(AppModel& model, QWidget* parent) : QWidget(parent) {
    const QString explanation = tr(
        "Dev-only packages (tests, build tools) usually don't ship with your app, so reports leave them out "
        "unless this is on.");
    auto* const toggle = new QCheckBox(tr("Include dev-only packages"));
    toggle->setObjectName(QStringLiteral("includeDev"));
    toggle->setAccessibleDescription(explanation);
    toggle->setChecked(model.includeDev());
    connect(toggle, &QCheckBox::toggled, &model, &AppModel::setIncludeDev);
    connect(&model, &AppModel::reportFieldsChanged, toggle,
            [toggle, &model] { toggle->setChecked(model.includeDev()); });

    auto* const words = new Label(Label::Role::caption, explanation);
    words->setWrapping(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(toggle);
    layout->addWidget(words);
}

#include "QuorvaneApp/Views/Dialogs/DevPackagesToggle.h"

#include "QuorvaneApp/Model/AppModel.h"

#include <QCheckBox>

DevPackagesToggle::DevPackagesToggle(AppModel& model, QWidget* parent)
    : ExplainedToggle(
          QStringLiteral("Include dev-only packages"),
          QStringLiteral(
              "Dev-only packages (tests, build tools) usually don't ship with your app, so reports leave them out unless this is on."),
          parent) {
    box().setObjectName(QStringLiteral("includeDev"));
    box().setChecked(model.includeDev());
    connect(&box(), &QCheckBox::toggled, &model, &AppModel::setIncludeDev);
    connect(&model, &AppModel::reportFieldsChanged, this,
            [this, &model] { box().setChecked(model.includeDev()); });
}

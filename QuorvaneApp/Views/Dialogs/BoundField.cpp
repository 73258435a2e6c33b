#include "QuorvaneApp/Views/Dialogs/BoundField.h"

#include "QuorvaneApp/Model/AppModel.h"

BoundField::BoundField(AppModel& model, Getter get, Setter set, QWidget* parent)
    : Field((model.*get)(), parent) {
    connect(this, &QLineEdit::textEdited, &model, set);
    connect(&model, &AppModel::reportFieldsChanged, this, [this, &model, get] {
        if (text() != (model.*get)()) {
            setText((model.*get)());
        }
    });
}

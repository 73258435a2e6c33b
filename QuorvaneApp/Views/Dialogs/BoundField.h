#pragma once

#include "QuorvaneApp/Views/Controls/Field.h"

class AppModel;

/// A line of text that always shows, and changes, one report field of the model.
class BoundField : public Field {
    Q_OBJECT

public:
    using Getter = const QString& (AppModel::*)() const;
    using Setter = void (AppModel::*)(const QString&);

    BoundField(AppModel& model, Getter get, Setter set, QWidget* parent = nullptr);
};

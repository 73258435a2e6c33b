#include "QuorvaneApp/Views/Results/SourcesView.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <QVBoxLayout>

namespace {

Label* line(Label::Role role, const QString& text) {
    auto* const label = new Label(role, text);
    label->setWrapping(true);
    label->makeSelectable();
    return label;
}

}  // namespace

SourcesView::SourcesView(AppModel& model, QWidget* parent)
    : ScrolledColumn(QStringLiteral("sources"), tr("What was read"), parent), model_(&model) {
    connect(model_, &AppModel::projectChanged, this, &SourcesView::rebuild);
    rebuild();
}

void SourcesView::rebuild() {
    QVBoxLayout* const column = newColumn();
    column->addWidget(line(Label::Role::caption, tr("Select a package to see what is known about it.")));
    const ScanKit::ScanResult* const result = model_->result();
    if (result != nullptr && !result->sources.empty()) {
        column->addWidget(new Label(Label::Role::strong, tr("What was read")));
        for (const ScanKit::ScanSource& source : result->sources) {
            auto* const group = new QVBoxLayout;
            group->setSpacing(1);
            group->addWidget(line(Label::Role::body, Texts::oneLine(Texts::fromUtf8(source.path))));
            const std::string entries = source.entries ? "; " + inWords(*source.entries) : std::string();
            group->addWidget(line(Label::Role::caption, Texts::fromUtf8(source.kind + entries)));
            column->addLayout(group);
        }
    }
    setColumn(column);
}

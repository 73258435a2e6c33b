#include "QuorvaneApp/Views/Results/SourcesView.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/Label.h"

#include <utility>

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

Label* line(Label::Role role, const QString& text) {
    auto* const label = new Label(role, text);
    label->setWrapping(true);
    label->makeSelectable();
    return label;
}

/// A path, and below it what it is.
QVBoxLayout* twoLines(const QString& path, const QString& kind) {
    auto* const group = new QVBoxLayout;
    group->setSpacing(1);
    group->addWidget(line(Label::Role::body, path));
    group->addWidget(line(Label::Role::caption, kind));
    return group;
}

}  // namespace

SourcesView::SourcesView(AppModel& model, QWidget* parent)
    : ScrolledColumn(QStringLiteral("sources"), QStringLiteral("What was read"), parent), model_(&model) {
    connect(model_, &AppModel::projectChanged, this, &SourcesView::rebuild);
    connect(model_, &AppModel::selectionChanged, this, [this] {
        if (saysHowToSelect_ == model_->selection().has_value()) {
            rebuild();
        }
    });
    connect(model_, &AppModel::scanningChanged, this, &SourcesView::rebuild);
    rebuild();
}

void SourcesView::rebuild() {
    QVBoxLayout* const column = newColumn();
    saysHowToSelect_ = !model_->selection();
    if (saysHowToSelect_) {
        column->addWidget(
            line(Label::Role::caption, QStringLiteral("Select a package to see what is known about it.")));
    }
    addAdded(*column);
    addRead(*column);
    setColumn(column);
}

void SourcesView::addRead(QVBoxLayout& column) {
    const ScanKit::ScanResult* const result = model_->result();
    if (result == nullptr || result->sources.empty()) {
        return;
    }
    column.addWidget(new Label(Label::Role::strong, QStringLiteral("What was read")));
    for (const ScanKit::ScanSource& source : result->sources) {
        const std::string entries = source.entries ? "; " + inWords(*source.entries) : std::string();
        column.addLayout(
            twoLines(Texts::oneLine(Texts::fromUtf8(source.path)), Texts::fromUtf8(source.kind + entries)));
    }
}

void SourcesView::addAdded(QVBoxLayout& column) {
    if (model_->extraCheckouts().empty() && model_->pythonEnvironments().empty()) {
        return;
    }
    column.addWidget(new Label(Label::Role::strong, QStringLiteral("Added by you")));
    for (std::size_t i = 0; i < model_->extraCheckouts().size(); ++i) {
        addRemovable(column, model_->extraCheckouts()[i], QStringLiteral("Checkouts folder"),
                     [this, i] { model_->removeCheckouts(i); });
    }
    for (const std::filesystem::path& environment : model_->pythonEnvironments()) {
        addRemovable(column, environment, QStringLiteral("Python environment"),
                     [this] { model_->removePythonEnvironments(); });
    }
}

void SourcesView::addRemovable(QVBoxLayout& column, const std::filesystem::path& folder, const QString& kind,
                               std::function<void()> remove) {
    const QString path = Texts::oneLine(Texts::shown(folder));
    auto* const button = new Button(QStringLiteral("Remove"));
    button->setObjectName(QStringLiteral("removeFolder"));
    button->setAccessibleName(QStringLiteral("Remove %1").arg(path));
    // Rebuilding deletes the button that was pressed, so it waits until the click is over.
    connect(button, &QPushButton::clicked, model_, std::move(remove), Qt::QueuedConnection);
    auto* const row = new QHBoxLayout;
    row->addLayout(twoLines(path, kind), 1);
    row->addWidget(button, 0, Qt::AlignTop);
    column.addLayout(row);
}

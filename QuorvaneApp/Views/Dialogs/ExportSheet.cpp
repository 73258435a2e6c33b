#include "QuorvaneApp/Views/Dialogs/ExportSheet.h"

#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Model/Texts.h"
#include "QuorvaneApp/Views/Controls/Button.h"
#include "QuorvaneApp/Views/Controls/FittedScrollArea.h"
#include "QuorvaneApp/Views/Controls/Label.h"
#include "QuorvaneApp/Views/Dialogs/BoundField.h"
#include "QuorvaneApp/Views/Dialogs/DevPackagesToggle.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QScreen>
#include <QVBoxLayout>

ExportSheet::ExportSheet(AppModel& model, QWidget* parent)
    : QDialog(parent, Qt::Sheet),
      model_(&model),
      count_(new Label(Label::Role::caption)),
      export_(new Button(QStringLiteral("Export…"))) {
    setObjectName(QStringLiteral("exportSheet"));
    setWindowTitle(QStringLiteral("Export Report"));
    count_->setWrapping(true);
    export_->setObjectName(QStringLiteral("exportButton"));
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton(export_, QDialogButtonBox::AcceptRole);
    buttons->addButton(new Button(QStringLiteral("Cancel")), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 20, 22, 18);
    layout->setSpacing(14);
    layout->addWidget(makeBody());
    layout->addStretch();
    layout->addWidget(buttons);
    export_->setDefault(true);

    connect(model_, &AppModel::reportFieldsChanged, this, &ExportSheet::showCount);
    connect(model_, &AppModel::projectChanged, this, &ExportSheet::showCount);
    showCount();
    // The longest report title on one line, and explanations that wrap only once or twice.
    setMinimumWidth(fontMetrics().averageCharWidth() * 66);
}

/// Scrolls where letters are large and the screen is small, so that the buttons below it are always in sight.
QWidget* ExportSheet::makeBody() {
    auto* const page = new QWidget;
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(new Label(Label::Role::heading, QStringLiteral("Export Report")));
    layout->addWidget(count_);
    layout->addSpacing(10);
    layout->addWidget(makeFields());
    layout->addSpacing(10);
    layout->addWidget(new DevPackagesToggle(*model_));
    layout->addSpacing(10);
    for (const ScanKit::ReportFormat& format : ScanKit::reportFormats()) {
        layout->addWidget(addFormat(format));
    }
    auto* const area = new FittedScrollArea;
    area->setAccessibleName(QStringLiteral("Reports to export"));
    area->setFocusPolicy(Qt::NoFocus);
    area->setGreatestHeight(screen()->availableSize().height() * 7 / 10);
    area->setWidget(page);
    return area;
}

/// Only now do its controls know their style, and with it their height.
void ExportSheet::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    resize(width(), layout()->totalHeightForWidth(width()));
}

ScanKit::ReportFormats ExportSheet::formats() const {
    auto formats = ScanKit::ReportFormats::none;
    for (const Toggle& toggle : toggles_) {
        if (toggle.box->isChecked()) {
            formats = formats | toggle.format;
        }
    }
    return formats;
}

QCheckBox* ExportSheet::addFormat(const ScanKit::ReportFormat& format) {
    auto* const box = new QCheckBox(Texts::fromUtf8(format.title));
    box->setObjectName(Texts::fromUtf8(format.rawValue));
    box->setChecked(format.isUsual);
    connect(box, &QCheckBox::toggled, this, &ExportSheet::showWhetherReady);
    toggles_.push_back({format.bit, box});
    return box;
}

QWidget* ExportSheet::makeFields() {
    auto* const fields = new QWidget;
    auto* const form = new QFormLayout(fields);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(12);
    // A Mac would leave the fields as narrow as their hint.
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    const auto add = [&](const QString& name, const QString& title, const QString& placeholder,
                         BoundField::Getter get, BoundField::Setter set) {
        auto* const field = new BoundField(*model_, get, set);
        field->setObjectName(name);
        field->setAccessibleName(title);
        field->setPlaceholderText(placeholder);
        form->addRow(title, field);
    };
    add(QStringLiteral("reportName"), QStringLiteral("Project name"), {}, &AppModel::reportName,
        &AppModel::setReportName);
    add(QStringLiteral("preparedFor"), QStringLiteral("Prepared for"), QStringLiteral("Client (optional)"),
        &AppModel::preparedFor, &AppModel::setPreparedFor);
    add(QStringLiteral("preparedBy"), QStringLiteral("Prepared by"),
        QStringLiteral("You or your studio (optional)"), &AppModel::preparedBy, &AppModel::setPreparedBy);
    return fields;
}

void ExportSheet::showCount() {
    // The sentence has this one form, for a single package as well.
    count_->setText(
        QStringLiteral("%1 packages. Not legal advice: have anything flagged reviewed before you ship.")
            .arg(model_->reportRows().size()));
}

void ExportSheet::showWhetherReady() {
    export_->setEnabled(formats() != ScanKit::ReportFormats::none);
}

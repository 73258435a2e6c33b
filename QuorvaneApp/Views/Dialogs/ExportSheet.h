#pragma once

#include "ScanKit/Reports/ReportWriter.h"

#include <QDialog>

class AppModel;
class Label;
class QCheckBox;
class QPushButton;

/// What to export and what the reports shall print. Leaves the model's fields as the user set them, and tells
/// the formats that were checked.
class ExportSheet : public QDialog {
    Q_OBJECT

public:
    explicit ExportSheet(AppModel& model, QWidget* parent = nullptr);

    ScanKit::ReportFormats formats() const;

private:
    QCheckBox* addFormat(const QString& name, const QString& text);
    QWidget* makeFields();
    void showCount();
    void showWhetherReady();

    AppModel* model_;
    Label* count_;
    QCheckBox* pdf_;
    QCheckBox* notice_;
    QCheckBox* csv_;
    QCheckBox* json_;
    QPushButton* export_;
};

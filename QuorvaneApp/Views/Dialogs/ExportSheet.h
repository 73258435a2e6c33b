#pragma once

#include "ScanKit/Reports/ReportWriter.h"

#include <vector>

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

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Toggle {
        ScanKit::ReportFormats format;
        QCheckBox* box;
    };
    QCheckBox* addFormat(const ScanKit::ReportFormat& format);
    QWidget* makeBody();
    QWidget* makeFields();
    void showCount();
    void showWhetherReady();

    AppModel* model_;
    Label* count_;
    std::vector<Toggle> toggles_;  ///< one for each report
    QPushButton* export_;
};

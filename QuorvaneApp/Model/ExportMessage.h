#pragma once

#include "ScanKit/Reports/ReportWriter.h"

#include <QString>

/// The outcome of saving reports in one line: the names of the files, or the system's reason.
QString exportMessageFor(const ScanKit::SavedReports& saved);

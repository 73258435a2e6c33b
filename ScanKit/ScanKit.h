#pragma once

/// The library as other programs use it. A scan takes three steps, each a function from values to values:
///
///     const ScanKit::Detection found = ScanKit::detect(folder);
///     const ScanKit::ScanResult result = ScanKit::Scanner::scan(
///         folder, {.ecosystems = found.ecosystemsToRead({})}, found);
///     ScanKit::saveReports(result, {.projectName = result.projectName}, ScanKit::allReportFormats(), output);
///
/// Nothing throws but what the standard library throws when memory runs out, and nothing is kept between two calls but in
/// a FileCache that the caller hands to several scans; all functions may be called from any thread.
#include "ScanKit/Identification/Identification.h"
#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/LicenseMatcher.h"
#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Model/Coding.h"
#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/ReportFormats.h"
#include "ScanKit/Reports/ReportOptions.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Reports/ReportWriter.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Scanner.h"

#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

namespace ScanKit {

/// A small project whose rows show every case that the reports tell apart: all ecosystems, a dev-only
/// package, a package without license, text or source, texts that need care in a spreadsheet, a license given
/// as a choice. Scanned on January 5, 2026 at 14:03:22 UTC.
ScanResult sampleResult();
/// Printed for a client, dev-only packages left out.
ReportOptions sampleOptions();
/// A result of these dependencies alone, in this order, scanned at the same time.
ScanResult resultOf(std::vector<Dependency> dependencies);

}  // namespace ScanKit

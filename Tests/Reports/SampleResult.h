#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

namespace ScanKit {

/// A small project whose rows show every case that the reports tell apart: all ecosystems, a dev-only
/// package, a package without license, text or source, texts that need care in a spreadsheet, a license given
/// as a choice. Scanned on January 5, 2026 at 14:03:22 UTC.
ScanResult sampleResult();
/// One package and many files, with texts longer than a page, of both directions, and of bytes that are no text.
ScanResult hostileResult();
/// Printed for a client, dev-only packages left out.
ReportOptions sampleOptions();
/// A result of these dependencies alone, in this order, scanned at the same time.
ScanResult resultOf(std::vector<Dependency> dependencies);

/// Compares with the file of this name in Tests/Golden byte for byte. QUORVANE_REWRITE_GOLDEN=1 in the
/// environment writes the file instead: read the difference before it is committed.
void expectGolden(const std::string& name, const std::string& written);

}  // namespace ScanKit

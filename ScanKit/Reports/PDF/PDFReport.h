#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/PDF/PDFPages.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <optional>
#include <string>

namespace ScanKit {

class PDFTextMeasure;

/// The license report that is handed to a client. It is made in two stages: first everything is given its place on
/// a page, then the pages are drawn.
struct PDFReport : PDFPages {
    /// Gives every part of the report its place; `measure` says how texts break into lines.
    static PDFReport laidOut(const ScanResult& result, const ReportOptions& options, PDFTextMeasure& measure);
    /// The finished document.
    static std::string document(const ScanResult& result, const ReportOptions& options);
    /// Which scripts no font on this machine has, and where to get one: a sentence, or nothing when all can be drawn.
    static std::optional<std::string> warning(const ScanResult& result, const ReportOptions& options);
};

}  // namespace ScanKit

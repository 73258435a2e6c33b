#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/PDF/PDFSharedNotes.h"
#include "ScanKit/Reports/ReportOptions.h"
#include "ScanKit/Reports/ReportSummary.h"

#include <string>
#include <string_view>
#include <vector>

namespace ScanKit {

/// What all sections of one report are made from.
struct PDFContents {
    const ScanResult& result;
    const ReportOptions& options;
    std::vector<const Dependency*> dependencies;  ///< those that the options let into reports
    ReportSummary summary;
    PDFSharedNotes notes;
    std::string date;
};

/// The gap below a section.
inline constexpr double sectionGap = 18;

/// Adds an item to a list in words.
inline void appendItem(std::string& list, std::string_view separator, std::string_view item) {
    list += list.empty() ? "" : separator;
    list += item;
}

}  // namespace ScanKit

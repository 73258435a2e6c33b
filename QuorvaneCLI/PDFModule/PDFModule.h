#pragma once

#include "ScanKit/Reports/PDF/PDFReport.h"

#include <string_view>

/// What the command finds in the module that makes its PDFs. The two exchange the library's records as they lie in memory, so
/// that both have to be of one build.
struct PDFModule {
    std::string_view number;  ///< of the version
    std::string_view commit;  ///< empty when not known
    decltype(&ScanKit::PDFReport::document) document;
    decltype(&ScanKit::PDFReport::warning) warning;

    /// Found where the command's own file says: in ../lib/quorvane/pdf from its folder.
    static constexpr const char* file = "quorvane-pdf.so";
    static constexpr const char* symbol = "quorvanePDFModule";
};

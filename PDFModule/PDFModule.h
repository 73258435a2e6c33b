#pragma once

#include "ScanKit/Reports/PDF/PDFReport.h"

#include <string_view>

/// What a program finds in the module that makes its PDFs. The two exchange the library's records as they lie in memory, so
/// that both have to be of one build.
struct PDFModule {
    std::string_view number;  ///< of the version
    std::string_view commit;  ///< empty when not known
    decltype(&ScanKit::PDFReport::document) document;
    decltype(&ScanKit::PDFReport::warning) warning;

    /// Found where the program's own file says: from its folder in ../lib/quorvane/pdf for the command, in
    /// ../lib/quorvane-app/pdf for the window.
    static constexpr const char* file = "quorvane-pdf.so";
    static constexpr const char* symbol = "quorvanePDFModule";
};

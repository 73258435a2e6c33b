#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <cstddef>
#include <optional>
#include <string>

/// How the text for a person is laid out.
struct TextStyle {
    std::optional<std::size_t> columns;  ///< the table fits this width; it is never cut when absent
    bool colour = false;                 ///< flags are coloured by severity
};

/// What a scan found, for a person to read: the sources, a table of the reported packages, the notes of those that
/// need review, and counts that account for every one. Safe to send to a terminal.
std::string resultText(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                       const TextStyle& style);

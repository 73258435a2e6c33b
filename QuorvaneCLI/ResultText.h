#pragma once

#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How the text for a person is laid out.
struct TextStyle {
    std::optional<std::size_t> columns;  ///< the table fits this width; it is never cut when absent
    bool colour = false;                 ///< flags are coloured by severity
};

/// What a scan found, for a person to read: the sources, a table of the reported packages, the notes of those that
/// need review, and counts that account for every one. Safe to send to a terminal.
std::string resultText(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                       const TextStyle& style);

/// For each dependency of this name, dev-only ones too, a shortest way from the project to it. Safe to send to a terminal.
std::string whyText(const ScanKit::ScanResult& result, std::string_view name);

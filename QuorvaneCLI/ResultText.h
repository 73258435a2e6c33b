#pragma once

#include "QuorvaneCLI/TextStyle.h"
#include "ScanKit/Model/ScanResult.h"
#include "ScanKit/Reports/ReportOptions.h"

#include <string>
#include <string_view>

/// What a scan found, for a person to read: the sources, a table of the reported packages, each note once with the
/// packages that need review for it, counts that account for every package, and last how many need a decision and
/// why. Safe to send to a terminal.
std::string resultText(const ScanKit::ScanResult& result, const ScanKit::ReportOptions& options,
                       const TextStyle& style);

/// For each dependency of this name, dev-only ones too, a shortest way from the project to it. Safe to send to a terminal.
std::string whyText(const ScanKit::ScanResult& result, std::string_view name, const TextStyle& style);

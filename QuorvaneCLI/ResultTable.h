#pragma once

#include "QuorvaneCLI/TextStyle.h"
#include "ScanKit/Model/Dependency.h"

#include <string>
#include <vector>

/// The packages as a table under a heading, laid out for the terminal's width so that nothing is cut: what does not
/// fit goes on in the next line of its row. Where the flags have no room beside the rest they stand below it, and on
/// a very narrow terminal each package is a short list. Safe to send to a terminal.
std::string resultTable(const std::vector<const ScanKit::Dependency*>& dependencies, const TextStyle& style);

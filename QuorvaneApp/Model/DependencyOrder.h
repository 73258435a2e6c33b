#pragma once

#include "QuorvaneApp/Model/ScannedProject.h"

#include <string_view>
#include <vector>

/// The columns of the table, in order.
enum class DependencyColumn { package, version, ecosystem, license, foundBy, flag };

/// All rows of the project, sorted by one column. Rows that are equal in it keep the result's order, and so
/// they do in a descending order. By flag, the most serious come first; rows without a flag come last.
std::vector<int> sortedRows(const ScannedProject& project, DependencyColumn column, bool isDescending);

/// Less than, equal to or greater than zero; runs of digits compare as numbers, so that 1.10 follows 1.9. (For
/// the eye alone: each ecosystem has an order of its own, and so has the update framework.)
int compareVersions(std::string_view a, std::string_view b);

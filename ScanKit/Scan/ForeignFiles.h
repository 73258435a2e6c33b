#pragma once

#include "ScanKit/Scan/Reading.h"

#include <string_view>

namespace ScanKit {

/// True for the name of a file that lists packages of an ecosystem which is not read.
bool isForeignFile(std::string_view name);

/// Warns once a kind of such files, so that nothing is missing in silence.
void warnOfForeignFiles(Reading& reading);

}  // namespace ScanKit

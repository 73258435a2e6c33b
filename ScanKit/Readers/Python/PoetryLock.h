#pragma once

#include "ScanKit/Readers/Python/Requirement.h"

#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// The packages of a poetry.lock, read line by line; a block without a name is left out.
std::vector<Requirement> requirementsFromPoetryLock(std::string_view text);

}  // namespace ScanKit::PythonParser

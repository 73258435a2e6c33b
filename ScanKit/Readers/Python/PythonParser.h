#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/Python/Environment.h"
#include "ScanKit/Readers/Python/PoetryLock.h"
#include "ScanKit/Readers/Python/Requirements.h"

#include <vector>

/// Turns a Python project's requirements and the distributions installed in its environments into dependencies.
/// Nothing here fails: what cannot be read is left out.
namespace ScanKit::PythonParser {

/// Every installed distribution, except the tools that come with each environment when nothing declares them;
/// then every requirement that is not installed. Both in the order of their normalized names. Of several
/// requirements for a package the last counts, but one without a version never displaces one with, and one for development
/// never displaces one that ships.
std::vector<RawDependency> dependencies(const std::vector<Requirement>& requirements,
                                        const InstalledPackages& installed);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"
#include "ScanKit/Readers/SwiftPM/PackageResolved.h"

#include <filesystem>
#include <vector>

/// Turns the Package.resolved files of a project and the folders in which its packages are checked out into
/// dependencies. Nothing here fails: what cannot be read is left out.
namespace ScanKit::SwiftPMParser {

/// One dependency for each identity, from its first pin, in pin order. A package's folder is the first of its
/// name in the checkout folders, taken in the order given; one that is found nowhere has no folder.
std::vector<RawDependency> dependencies(const std::vector<Pin>& pins,
                                        const std::vector<std::filesystem::path>& checkoutFolders,
                                        const ReadControl& control = {});

}  // namespace ScanKit::SwiftPMParser

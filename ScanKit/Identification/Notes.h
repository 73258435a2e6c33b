#pragma once

#include "ScanKit/Identification/LicenseDecision.h"
#include "ScanKit/Model/Dependency.h"
#include "ScanKit/Model/RawDependency.h"

namespace ScanKit {

/// What the notes are told of a package beside the decision on its license.
struct NoteFacts {
    const RawDependency& package;
    const LicenseDecision& decision;
    bool isCustom = false;     ///< the metadata points to terms of the package's own
    bool textWasRead = false;  ///< a license file holds something to read
};

/// Raises the flags and writes the notes of a dependency whose category and license are filled in. Without a
/// decided license it also settles the category. Flags end in their order, each once; notes in the order raised.
void raiseFlagsAndNotes(const NoteFacts& facts, Dependency& dependency);

}  // namespace ScanKit

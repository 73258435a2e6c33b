#pragma once

#include "ScanKit/Model/RawDependency.h"

namespace ScanKit {

/// Makes a record fit to be handed on, whatever its package wrote into its metadata: name, version and source stand on
/// one line each, so that no package can write a line of a report; the declared license has plain lines; and no text holds
/// the user information of a web address, which may be a token.
void makeReportable(RawDependency& package);

}  // namespace ScanKit

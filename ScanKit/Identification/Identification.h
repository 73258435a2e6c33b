#pragma once

#include "ScanKit/Identification/TextReading.h"
#include "ScanKit/Model/Dependency.h"
#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Support/FileCache.h"

#include <memory>

namespace ScanKit {

/// Decides one package's license from its metadata and its license files, which are read here, and says in plain
/// notes what needs attention. Never fails: what cannot be decided becomes a flag and a note.
Dependency identify(const RawDependency& package);
/// The same within a scan: a text that `readings` already knows is not read again, and a package that `cache` knows is not
/// identified again while its files are the same. May run on any thread.
Dependency identify(const std::shared_ptr<const RawDependency>& package, TextReadings& readings,
                    FileCache::Round* cache = nullptr);

/// Makes what identification makes once, the tables of the license texts: so that it is there when the first package has been read.
/// Without it the first packages wait for that. May run beside anything.
void prepareIdentification();

}  // namespace ScanKit

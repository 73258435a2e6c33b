#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Hashing.h"

#include <string>
#include <tuple>

namespace ScanKit {

/// One file or folder that a scan read.
struct ScanSource {
    Ecosystem ecosystem = Ecosystem::swiftpm;
    std::string path;  ///< relative to the scanned folder, or in full with "~" for locations outside it
    std::string kind;  ///< what it is, in words: "Package.resolved", "npm lockfile", "Installed packages" …

    bool operator==(const ScanSource&) const = default;
    auto fields() const { return std::tie(ecosystem, path, kind); }
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Hashing.h"

#include <filesystem>
#include <set>
#include <tuple>
#include <vector>

namespace ScanKit {

/// What a scan covers.
struct ScanOptions {
    /// The ecosystems to read. Empty, as made, reads nothing: `Detection::ecosystemsToRead` says what is there.
    std::set<Ecosystem> ecosystems;
    std::vector<std::filesystem::path> checkoutFolders;     ///< further folders of checked-out Swift packages
    std::vector<std::filesystem::path> pythonEnvironments;  ///< in place of the detected ones, when not empty
    bool useXcodeDerivedData = false;  ///< search the development tools' build products for checkouts

    bool operator==(const ScanOptions&) const = default;
    auto fields() const {
        return std::tie(ecosystems, checkoutFolders, pythonEnvironments, useXcodeDerivedData);
    }
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/Hashing.h"

#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace ScanKit {

/// Something that kept a scan from reading all licenses, and that the user can mend.
struct ScanWarning {
    /// What is the matter. Whoever offers a remedy goes by this and never reads the sentence.
    enum class Kind {
        dependencyFileUnreadable,  ///< cannot be read, or is not what its name says
        swiftPackagesNotCheckedOut,
        npmModulesMissing,         ///< a lockfile without its node_modules
        npmPackagesNotListed,      ///< a package.json with neither
        pythonEnvironmentMissing,  ///< requirements, and nothing installed
        entriesUnreadable,         ///< of a lockfile that can be read
        packagesNotRead,           ///< of another ecosystem
        swiftPackagesNotResolved,  ///< a Package.swift that nothing pins the packages of
        lockfileIsBinary,
        lockfileSetAside,  ///< another package manager's lockfile stands beside it and counts
    };

    Kind kind = Kind::dependencyFileUnreadable;
    std::string sentence;  ///< in plain words: what could not be read, and what to do

    bool operator==(const ScanWarning&) const = default;
    auto fields() const { return std::tie(kind, sentence); }
};

/// The short name of the kind, such as "npmModulesMissing".
std::string_view rawValue(ScanWarning::Kind kind);
/// The kind with exactly this raw value, or none.
std::optional<ScanWarning::Kind> warningKindFromRawValue(std::string_view rawValue);

}  // namespace ScanKit

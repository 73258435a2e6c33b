#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Turns the Package.resolved files of a project and the folders in which its packages are checked out into
/// dependencies. Nothing here fails: what cannot be read is left out.
namespace ScanKit::SwiftPMParser {

/// One package that a Package.resolved file pins.
struct Pin {
    std::string identity;  ///< never empty
    std::string name;      ///< for display
    std::string location;  ///< repository address or path as written; empty when the file has none
    std::optional<std::string> version;
    std::optional<std::string> branch;
    std::optional<std::string> revision;  ///< a commit hash

    /// The version; else the branch with the short revision, or what there is of the two; else "unversioned".
    std::string displayVersion() const;

    bool operator==(const Pin&) const = default;
};

/// The pins of one Package.resolved file of any format version, in file order. Local packages are left out.
/// Empty when the bytes are no such file.
std::vector<Pin> pins(std::string_view resolvedFile);

/// The package name that a repository address ends in: "Repo" of "https://host/owner/Repo.git" and of
/// "git@host:Repo.git". Empty when there is none.
std::string packageName(std::string_view location);

/// One dependency for each identity, from its first pin, in pin order. A package's folder is the first of its
/// name in the checkout folders, taken in the order given; one that is found nowhere has no folder.
std::vector<RawDependency> dependencies(const std::vector<Pin>& pins,
                                        const std::vector<std::filesystem::path>& checkoutFolders,
                                        const ReadControl& control = {});

}  // namespace ScanKit::SwiftPMParser

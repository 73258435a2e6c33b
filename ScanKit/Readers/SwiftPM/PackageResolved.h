#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The file in which the Swift package manager pins the packages of a project.
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
/// Absent when the bytes are no such file.
std::optional<std::vector<Pin>> pins(std::string_view resolvedFile);

/// The same with what its other entries are.
struct ResolvedFile {
    std::vector<Pin> pins;
    std::size_t own = 0;         ///< local packages
    std::size_t unreadable = 0;  ///< without an identity
};
std::optional<ResolvedFile> resolvedFile(std::string_view bytes);

/// The package name that a repository address ends in: "Repo" of "https://host/owner/Repo.git" and of
/// "git@host:Repo.git". Empty when there is none.
std::string packageName(std::string_view location);

}  // namespace ScanKit::SwiftPMParser

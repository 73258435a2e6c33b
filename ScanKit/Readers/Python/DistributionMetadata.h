#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit::PythonParser {

/// One installed distribution, as its metadata folder describes it.
struct Installed {
    std::string name;
    std::string version;
    std::optional<std::string> license;            ///< absent when it says "UNKNOWN" or nothing
    std::optional<std::string> licenseExpression;  ///< of newer metadata
    std::vector<std::string> classifiers;          ///< all of them, in order
    std::optional<std::string> homepage;           ///< the home page, else a link to the source
    std::filesystem::path folder;                  ///< the metadata folder, not the code
    std::vector<std::filesystem::path> licenseFiles;

    bool operator==(const Installed&) const = default;
};

/// What a metadata folder (name.dist-info or name.egg-info) describes. Absent when its metadata file cannot be
/// read or lacks a name or version.
std::optional<Installed> distribution(const std::filesystem::path& metadataFolder);

}  // namespace ScanKit::PythonParser

#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Readers/ReadControl.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Turns a Python project's requirements and the distributions installed in its environments into dependencies.
/// Nothing here fails: what cannot be read is left out.
namespace ScanKit::PythonParser {

/// One package that a project declares.
struct Requirement {
    std::string name;                    ///< as written
    std::optional<std::string> version;  ///< present when exactly one is asked for
    bool isDev = false;

    bool operator==(const Requirement&) const = default;
};

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
using InstalledPackages = std::map<std::string, Installed>;  ///< by normalized name

/// The name under which spellings of one package are the same: lower case, each run of "-", "_" and "." one "-".
std::string normalizedName(std::string_view name);

/// The requirements of a requirements file, each marked with `isDev`. Options, addresses and local paths are left
/// out, and so is a line that names no package.
std::vector<Requirement> requirementsFromText(std::string_view text, bool isDev);
/// The packages of a poetry.lock.
std::vector<Requirement> requirementsFromPoetryLock(std::string_view text);

/// The site-packages folders of an environment, each real folder once, in the order found; or the folder itself
/// when it is one.
std::vector<std::filesystem::path> sitePackages(const std::filesystem::path& environment);
/// The distributions of these site-packages folders. Of those that share a normalized name the first counts.
InstalledPackages installed(const std::vector<std::filesystem::path>& sitePackages,
                            const ReadControl& control = {});
/// What a metadata folder (name.dist-info or name.egg-info) describes. Absent when its metadata file cannot be
/// read or lacks a name or version.
std::optional<Installed> distribution(const std::filesystem::path& metadataFolder);

/// Every installed distribution, except the tools that come with each environment when nothing declares them;
/// then every requirement that is not installed. Both in the order of their normalized names. Of several
/// requirements for a package the last counts, but one without a version never displaces one with.
std::vector<RawDependency> dependencies(const std::vector<Requirement>& requirements,
                                        const InstalledPackages& installed);

}  // namespace ScanKit::PythonParser

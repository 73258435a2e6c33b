#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/ReadControl.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The archives in which Yarn keeps packages that are installed without being unpacked: .yarn/cache of the project.
namespace ScanKit::NPMParser {

/// What an archive says of its package. Bytes as they stand there, not yet text.
struct PackedPackage {
    using File = std::pair<std::string, std::string>;  ///< name and bytes

    std::string archive;   ///< the archive's own name
    std::string manifest;  ///< the package.json
    std::vector<File>
        licenseTexts;  ///< in the order in which they are read, one that package.json names first
    std::vector<File> noticeTexts;

    bool operator==(const PackedPackage&) const = default;
};

/// Of a license or notice file this much is read: one byte more than reports use, which shows whether it goes on.
inline constexpr std::size_t mostPackedTextBytes = 400'001;
/// Of all those of one package; what comes beyond is left out.
inline constexpr std::size_t mostPackedBytes = std::size_t{8} << 20;

/// The archive of each entry, by its place in `entries`. Found by its name (NAME-npm-VERSION-HASH-CHECKSUM.zip) or, for what
/// came from elsewhere than the registry, by the package.json within. Absent for an entry without an archive, for an own
/// one and for one that cannot be read.
std::vector<std::optional<std::filesystem::path>> cachedArchives(const Lockfile& lockfile,
                                                                 const std::filesystem::path& cacheFolder,
                                                                 const ReadControl& control = {});

/// The package of an archive. Absent when it is no archive of a package, or has no package.json that can be read.
std::optional<PackedPackage> readPackedPackage(const std::filesystem::path& archive);

}  // namespace ScanKit::NPMParser

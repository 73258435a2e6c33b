#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Hashing.h"

#include <filesystem>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace ScanKit {

/// A file of a package that is kept packed: its name and its bytes, cut behind what reports use.
struct PackedFile {
    std::string name;
    std::string bytes;

    bool operator==(const PackedFile&) const = default;
    auto fields() const { return std::tie(name, bytes); }
};

/// One dependency as a reader found it, before its license is identified.
struct RawDependency {
    Ecosystem ecosystem = Ecosystem::swiftpm;
    std::string name;                             ///< as the ecosystem spells it
    std::string version;                          ///< resolved or installed; may be empty or a word
    std::optional<std::string> source;            ///< repository address, registry link or local path
    bool isDev = false;                           ///< needed only for development
    std::optional<std::string> declared;          ///< the license as the metadata states it, in any form
    std::vector<std::string> classifiers;         ///< trove classifiers that begin with "License ::"
    std::optional<std::filesystem::path> folder;  ///< the package's folder; absent when it is not on disk
    std::vector<std::filesystem::path> licenseFiles;
    std::vector<std::filesystem::path> noticeFiles;
    std::vector<PackedFile> packedLicenses;  ///< read in place of files, where the package is an archive
    std::vector<PackedFile> packedNotices;
    std::vector<std::string> way;  ///< from the project, itself last; empty where no file says who needs it

    bool operator==(const RawDependency&) const = default;
    auto fields() const {
        return std::tie(ecosystem, name, version, source, isDev, declared, classifiers, folder, licenseFiles,
                        noticeFiles, packedLicenses, packedNotices, way);
    }
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Hashing.h"

#include <filesystem>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace ScanKit {

/// The dependency files and folders that a project folder holds, each list in the order found.
struct Detection {
    std::vector<std::filesystem::path> resolvedFiles;          ///< Package.resolved files
    std::vector<std::filesystem::path> checkoutFolders;        ///< .build/checkouts, SourcePackages/checkouts
    std::vector<std::string> xcodeProjectNames;                ///< bundle names without extension, each once
    std::vector<std::filesystem::path> npmLockfiles;           ///< one for each package folder that has one
    std::vector<std::filesystem::path> npmModulesWithoutLock;  ///< node_modules folders without a lockfile
    std::vector<std::filesystem::path> npmManifestsOnly;       ///< package.json files with neither
    std::vector<std::filesystem::path> requirementFiles;       ///< requirements*.txt
    std::vector<std::filesystem::path> poetryLocks;
    std::vector<std::filesystem::path> virtualEnvs;  ///< folders that hold a pyvenv.cfg
    std::vector<std::filesystem::path> pnpmLocks;
    std::vector<std::filesystem::path> yarnLocks;
    std::vector<std::filesystem::path> bunLocks;        ///< bun.lock
    std::vector<std::filesystem::path> bunBinaryLocks;  ///< bun.lockb without a bun.lock beside it
    std::vector<std::filesystem::path> uvLocks;
    std::vector<std::filesystem::path> pdmLocks;
    std::vector<std::filesystem::path> pipfileLocks;
    std::vector<std::filesystem::path> pyLocks;             ///< pylock.toml, pylock.NAME.toml
    std::vector<std::filesystem::path> swiftManifestsOnly;  ///< Package.swift without a Package.resolved
    std::vector<std::filesystem::path> foreignFiles;        ///< of ecosystems that are not read

    /// The ecosystems found, in `Ecosystem` order. Checkout folders and project names alone do not count.
    std::vector<Ecosystem> ecosystems() const;
    /// The ecosystems that a scan reads when nobody names them: those found, and Python when the user chose an
    /// environment for it.
    std::set<Ecosystem> ecosystemsToRead(const std::vector<std::filesystem::path>& chosenEnvironments) const;

    bool operator==(const Detection&) const = default;
    auto fields() const {
        return std::tie(resolvedFiles, checkoutFolders, xcodeProjectNames, npmLockfiles,
                        npmModulesWithoutLock, npmManifestsOnly, requirementFiles, poetryLocks, virtualEnvs,
                        pnpmLocks, yarnLocks, bunLocks, bunBinaryLocks, uvLocks, pdmLocks, pipfileLocks,
                        pyLocks, swiftManifestsOnly, foreignFiles);
    }
};

}  // namespace ScanKit

#pragma once

#include "ScanKit/Model/Ecosystem.h"
#include "ScanKit/Model/Hashing.h"

#include <cstddef>
#include <optional>
#include <string>
#include <tuple>

namespace ScanKit {

/// What became of the entries of a lockfile. Each entry is in one of these states.
struct EntryStates {
    std::size_t listed = 0;         ///< a dependency of the result
    std::size_t listedAlready = 0;  ///< the same name and version as an entry before it
    std::size_t notInstalled = 0;   ///< optional, and left out on this system
    std::size_t own = 0;            ///< the project's: a link, a workspace member, a local path
    std::size_t unreadable = 0;     ///< names no package

    std::size_t total() const { return listed + listedAlready + notInstalled + own + unreadable; }

    bool operator==(const EntryStates&) const = default;
    auto fields() const { return std::tie(listed, listedAlready, notInstalled, own, unreadable); }
};

/// "640 entries: 620 listed, 13 listed already, 7 optional and not installed"; the states that no entry is in are left out, and
/// with one state alone so is what follows the colon, if that is `listed`.
std::string inWords(const EntryStates& states);

/// One file or folder that a scan read.
struct ScanSource {
    Ecosystem ecosystem = Ecosystem::swiftpm;
    std::string path;  ///< relative to the scanned folder, or in full with "~" for locations outside it
    std::string kind;  ///< what it is, in words: "Package.resolved", "npm lockfile", "Installed packages" …
    std::optional<EntryStates> entries;  ///< of a lockfile; absent for folders and lists without entries

    bool operator==(const ScanSource&) const = default;
    auto fields() const { return std::tie(ecosystem, path, kind, entries); }
};

}  // namespace ScanKit

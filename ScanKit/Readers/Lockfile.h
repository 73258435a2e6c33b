#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// One entry of a lockfile, as it stands there. What is installed is asked of the disk later.
struct LockedEntry {
    std::string
        key;  ///< as the file names it: "/@scope/a@1.0.0(peer@2.0.0)"; tells entries apart, but for those that a yarn.lock repeats
    std::string name;                     ///< of the package that is installed: the target of an alias
    std::string version;                  ///< empty when the entry has none
    std::optional<std::string> source;    ///< where it comes from, when the file says so
    std::optional<std::string> declared;  ///< the license, in the rare file that copies it
    bool isOwn = false;  ///< the project's: a workspace member, a link, a folder or file of the project
    bool isUnreadable = false;                ///< names no package, or is not what an entry should be
    std::vector<std::size_t> needs;           ///< entries that it depends on, by their places in `entries`
    std::vector<std::size_t> needsIfPresent;  ///< those that may be missing: optional dependencies

    bool operator==(const LockedEntry&) const = default;
};

/// What a lockfile says, whichever package manager wrote it.
struct Lockfile {
    std::vector<LockedEntry> entries;  ///< in the order of the file
    /// What the project and its workspace members ask for themselves, by place in `entries`.
    std::vector<std::size_t> shipped;
    std::vector<std::size_t> shippedIfPresent;  ///< optional dependencies
    std::vector<std::size_t> development;
    /// False when the file does not say who needs whom, or what the project itself asks for: then none is followed, and the roles are
    /// those that the three lists above give alone: what stands in none ships.
    bool knowsWays = true;
    std::vector<std::string> members;  ///< the folders of workspace members, below the project's, as written

    bool operator==(const Lockfile&) const = default;
};

/// What follows from who needs whom.
struct LockedRole {
    bool isReached =
        false;           ///< from the project; an entry that is not belongs to nobody, and counts as shipped
    bool isDev = false;  ///< only from development dependencies
    bool isOptional = false;  ///< only through optional dependencies
};

/// The role of each entry, by its place in `entries`.
std::vector<LockedRole> lockedRoles(const Lockfile& lockfile);

/// The shortest way from the project to each entry.
class LockedWays {
public:
    LockedWays() = default;  ///< to nothing
    explicit LockedWays(const Lockfile& lockfile);

    /// The entries on the way, the entry itself last; of several ways the first in the file's order, shipped ones before those
    /// of development. Empty for an entry that nothing asks for.
    std::vector<std::size_t> to(std::size_t entry) const;

private:
    std::vector<std::size_t> cameFrom_;  ///< of each entry; itself for what the project asks for
    std::vector<bool> isMet_;
};

}  // namespace ScanKit

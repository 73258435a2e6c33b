#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace ScanKit::NPMParser {

/// A project of a pnpm workspace, or the only one: what it asks for, as places in the lockfile's entries.
struct PnpmMember {
    std::vector<std::size_t> shipped;
    std::set<std::size_t> development;
};

/// The place of a package, and that of what it needs.
using PnpmNeed = std::pair<std::size_t, std::size_t>;

/// Since pnpm 11 a member does not ship what it lists for its development for the sake of a package that can do without it.
/// Takes those of the `peers` (needs of that kind) out of the lockfile that no member brings along: none ships the package
/// without listing the peer for its development. All stay, so that they count as shipped, where the members and what they come
/// to are so many that following each would take seconds.
void leaveOutPeers(Lockfile& lockfile, const std::vector<PnpmMember>& members,
                   const std::set<PnpmNeed>& peers);

}  // namespace ScanKit::NPMParser

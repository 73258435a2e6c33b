#pragma once

#include "ScanKit/Readers/Lockfile.h"

#include <optional>
#include <string_view>

/// pnpm's lockfile, pnpm-lock.yaml.
namespace ScanKit::NPMParser {

/// What a lockfile of format 5, 6 or 9 says: one entry for each package with its peers, as the file keys them. What
/// something asks for and no entry holds becomes an entry that is unreadable. Absent when the text is no such lockfile,
/// whole and of a known format: one with the marks of an unfinished merge, for example.
/// `pnpm` is the major version of the pnpm that installed the project, absent when nobody knows. Since 11 what the project
/// or a member of its workspace lists for its development it does not ship because a package that it ships may use it as a peer;
/// when the version is not known, it counts as shipped.
std::optional<Lockfile> pnpmLock(std::string_view text, std::optional<int> pnpm = {});

}  // namespace ScanKit::NPMParser

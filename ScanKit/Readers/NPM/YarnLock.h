#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/NPM/Manifest.h"

#include <optional>
#include <string_view>
#include <vector>

/// Yarn's lockfile, yarn.lock, in both of its formats: the own one of version 1, and YAML since then.
namespace ScanKit::NPMParser {

/// The entries of the file with who needs whom. What the project and its workspace members ask for is from `manifests` (the
/// project's first): the older format does not name it, the newer one does not tell which of it is for development. A package
/// that was patched is an entry beside the one that it was made from, and whoever needs it needs both. A resolution of the
/// project that sets another version leads to that version's entry; where none of a name fits what is asked for, the only
/// entry of that name counts, and of several none. What something asks for and no entry is the name of becomes an entry that is
/// unreadable, behind those of the file.
///
/// `settings` is the project's .yarnrc.yml, when it has one: what a member asks for as "catalog:" stands there.
///
/// Absent when the text is in neither format, and when it holds no package while the manifests ask for some.
std::optional<Lockfile> yarnLock(std::string_view text, const std::vector<Manifest>& manifests,
                                 std::string_view settings = {});

}  // namespace ScanKit::NPMParser

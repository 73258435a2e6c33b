#pragma once

#include <string>

/// What `--help` prints: it fits 80 columns.
std::string helpText();
/// What `--version` prints: the version, and the commit it was built from with its date where that is known.
std::string versionText();

#pragma once

#include <filesystem>
#include <optional>

#include <QString>

/// Why a folder cannot be scanned, in a plain sentence: it is gone, is no folder, or may not be read. None
/// when it can. Asks the disk, so not for the user-interface thread.
std::optional<QString> folderProblem(const std::filesystem::path& folder);

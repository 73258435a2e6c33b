#pragma once

#include <filesystem>
#include <optional>

class QMimeData;

/// What was dropped, when it is exactly one local file or folder; which of the two, the disk knows. None for
/// several, for a web address and for anything else.
std::optional<std::filesystem::path> droppedPath(const QMimeData& dropped);

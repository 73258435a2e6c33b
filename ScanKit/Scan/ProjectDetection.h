#pragma once

#include "ScanKit/Model/Detection.h"

#include <filesystem>

namespace ScanKit {

/// Finds the dependency files and folders of a project: in the root and in folders down to four levels below
/// it, leaving out build products, caches, version control and installed packages. Reads no file; looks at names
/// alone. Folders are visited in name order, each before its subfolders. A folder that is a link is tested like
/// any other but never descended into. An unreadable folder counts as empty.
/// The paths found are absolute; a relative root is taken from the working folder.
Detection detect(const std::filesystem::path& root);

}  // namespace ScanKit

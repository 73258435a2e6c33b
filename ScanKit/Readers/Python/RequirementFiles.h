#pragma once

#include "ScanKit/Readers/Python/Requirement.h"

#include <filesystem>
#include <vector>

namespace ScanKit::PythonParser {

/// One requirements file of a project. One that could not be read has no requirements.
struct RequirementFile {
    std::filesystem::path path;
    bool isRead = false;
    std::vector<Requirement> requirements;

    bool operator==(const RequirementFile&) const = default;
};

/// The detected files in their order, then those that they include, each once. A detected file with "dev" or "test" in its
/// name is for development, unless a file that ships includes it; an included one is what those are that include it.
/// A constraints file adds no package: it gives versions to what the files that name it, and what they include, leave
/// open. What is included must lie inside the project, links resolved, and of a thousand such files no more are looked at;
/// anything else that is included, a web address too, counts as not read.
std::vector<RequirementFile> readRequirementFiles(const std::vector<std::filesystem::path>& detected,
                                                  const std::filesystem::path& root);

}  // namespace ScanKit::PythonParser

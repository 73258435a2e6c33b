#pragma once

#include "ScanKit/Readers/Lockfile.h"
#include "ScanKit/Readers/Python/Requirement.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ScanKit::PythonParser {

/// The packages of a poetry.lock, read line by line; a block without a name is left out.
std::vector<Requirement> requirementsFromPoetryLock(std::string_view text);

/// The whole of a poetry.lock of any version. What ships is what belongs to the category or group "main"; where the file
/// knows neither, what the groups of pyproject.toml lead to. Without that file nobody knows the ways. Absent when the
/// text is no such file.
std::optional<Lockfile> poetryLock(std::string_view text, const std::optional<std::string>& pyproject);

}  // namespace ScanKit::PythonParser

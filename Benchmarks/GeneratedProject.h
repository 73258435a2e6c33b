#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

/// Projects of any size for measuring, made from the standard texts in the proportions of real ones.
namespace GeneratedProject {

/// Writes package.json, package-lock.json and node_modules with `count` installed packages into the folder. The
/// same count gives the same bytes. About a quarter of the license files differ, as in real projects.
void write(const std::filesystem::path& folder, std::size_t count);
/// The bytes of the lockfile alone.
std::string lockfile(std::size_t count);

}  // namespace GeneratedProject

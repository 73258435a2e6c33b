#pragma once

#include <cstddef>

/// What is taken for a file of a project at most, in bytes. Both lie far beyond any real one, and keep a hostile file
/// from filling the memory; what is larger counts as unreadable.
namespace ScanKit {

/// A package description: package.json, METADATA, PKG-INFO.
inline constexpr std::size_t largestPackageDescription = std::size_t{64} << 20;
/// A lockfile or requirements file.
inline constexpr std::size_t largestLockfile = std::size_t{512} << 20;

}  // namespace ScanKit

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// One member of an archive that a test makes, hostile ones included.
struct ZipMember {
    std::string name;
    std::string bytes;
    std::uint32_t mode = 0100644;  ///< what Unix says of a file: its kind and permissions
    bool isCompressed = false;
};

/// Writes a zip archive; a test failure when that fails.
void writeZip(const std::filesystem::path& path, const std::vector<ZipMember>& members);

#pragma once

#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Support/FileStamp.h"
#include "ScanKit/Support/SharedText.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace ScanKit {

/// One license or notice file of a package, as far as it could be read.
struct PackageText {
    std::string name;  ///< as people see it
    SharedText text;
    bool isCut = false;  ///< the file goes on behind the text
};

/// Matching and the reports use this much of a file and no more.
inline constexpr std::size_t mostBytesOfAText = 400'000;

/// The texts of the files, in their order; a reader has seen that each leads to a regular file. A file that cannot be read, or
/// that holds a NUL byte and so is no text, is passed over. `seen` learns of all of them.
std::vector<PackageText> readPackageTexts(const std::vector<std::filesystem::path>& files,
                                          SeenFiles* seen = nullptr);

/// The same of a package that is kept packed.
std::vector<PackageText> packedTexts(const std::vector<PackedFile>& files);

/// True when any of them holds something other than white space.
bool holdText(const std::vector<PackageText>& texts);

/// The texts as a report reproduces them: one stands alone, several stand under their names. Blank texts and
/// those equal to an earlier one are left out; a cut text says so. Absent when nothing is left.
SharedText reproduced(std::vector<PackageText> texts);

}  // namespace ScanKit

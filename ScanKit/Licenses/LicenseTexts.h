#pragma once

#include <optional>
#include <string_view>

/// License texts, built into the library byte for byte. The views live as long as the program. Names are those of the
/// files and are compared exactly ("MIT", "GPL-3.0"); any other name has no text.
namespace ScanKit {

/// A text of ScanKit/Licenses: a report reproduces it for a package without a license file.
std::optional<std::string_view> standardText(std::string_view name);
/// A text of ScanKit/Licenses/Reference: it only tells how a license reads. A license that comes in two forms has a second
/// one, named with a "+" and what is different about it: "Python-2.0+history".
std::optional<std::string_view> referenceText(std::string_view name);
/// The license that a text of this name belongs to.
constexpr std::string_view licenseOfText(std::string_view name) {
    return name.substr(0, name.find('+'));
}

}  // namespace ScanKit

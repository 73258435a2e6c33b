#pragma once

#include "ScanKit/Identification/Identification.h"
#include "ScanKit/Licenses/LicenseTexts.h"
#include "Tests/Builders/TemporaryFolder.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace ScanKit {

inline std::string standard(std::string_view name) {
    return std::string(standardText(name).value());
}

/// A package as a reader would hand it over, installed in a folder of its own.
class InstalledPackage {
public:
    explicit InstalledPackage(std::optional<std::string> declared = {}) {
        raw = {.ecosystem = Ecosystem::npm,
               .name = "package",
               .version = "1.0.0",
               .declared = std::move(declared),
               .folder = folder_.path()};
    }
    InstalledPackage& license(std::string_view name, std::string_view text) {
        raw.licenseFiles.push_back(folder_.write(name, text));
        return *this;
    }
    InstalledPackage& notice(std::string_view name, std::string_view text) {
        raw.noticeFiles.push_back(folder_.write(name, text));
        return *this;
    }
    Dependency identified() const { return identify(raw); }

    RawDependency raw;

private:
    TemporaryFolder folder_;
};

/// The license, on what evidence, and the flags: "MIT by metadata, noLicenseFile".
inline std::string outcome(const Dependency& dependency) {
    std::string text =
        dependency.license.value_or("nothing") + " by " + std::string(rawValue(dependency.basis));
    for (const Flag flag : dependency.flags) {
        text += ", " + std::string(rawValue(flag));
    }
    return text;
}

}  // namespace ScanKit

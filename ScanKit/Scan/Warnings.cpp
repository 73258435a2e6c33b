#include "ScanKit/Scan/Warnings.h"

#include "ScanKit/Support/Paths.h"

#include <string>

namespace ScanKit::Warnings {

ScanWarning dependencyFileUnreadable(const std::filesystem::path& file, const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::dependencyFileUnreadable,
        .sentence =
            displayPath(file, root) +
            " couldn't be read, so the packages it names are missing here. It may be damaged, or hold the marks of an unfinished merge. Mend it and scan again.",
    };
}

ScanWarning swiftPackagesNotCheckedOut() {
    return {
        .kind = ScanWarning::Kind::swiftPackagesNotCheckedOut,
        .sentence =
            "Some Swift packages aren't checked out where Quorvane can see them, so their license files couldn't be read. Build the project once in Xcode, or add the checkouts folder (…/SourcePackages/checkouts) and scan again.",
    };
}

ScanWarning npmModulesMissing(const std::filesystem::path& folder, const std::filesystem::path& root) {
    const std::string shown = displayPath(folder, root);
    return {
        .kind = ScanWarning::Kind::npmModulesMissing,
        .sentence =
            (shown == "." ? "The project" : shown) +
            " has a lockfile but no node_modules folder: licenses come from the lockfile, without the packages' license files. Run npm install and scan again for a complete NOTICE file.",
    };
}

ScanWarning npmPackagesNotListed(const std::filesystem::path& manifest, const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::npmPackagesNotListed,
        .sentence =
            displayPath(manifest, root) +
            " has no lockfile and no node_modules folder, so its dependencies can't be listed. Run npm install and scan again.",
    };
}

ScanWarning pythonEnvironmentMissing() {
    return {
        .kind = ScanWarning::Kind::pythonEnvironmentMissing,
        .sentence =
            "No virtual environment was found, so Python licenses couldn't be read. Choose the environment the project's packages are installed in (a folder with pyvenv.cfg) and scan again.",
    };
}

}  // namespace ScanKit::Warnings

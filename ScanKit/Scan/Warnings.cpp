#include "ScanKit/Scan/Warnings.h"

#include "ScanKit/Support/Paths.h"

#include <string>

namespace ScanKit::Warnings {
namespace {

/// "a/pom.xml", or "a/pom.xml (and 2 more)".
std::string shownFirst(const std::vector<std::filesystem::path>& files, const std::filesystem::path& root) {
    const std::string others =
        files.size() > 1 ? " (and " + std::to_string(files.size() - 1) + " more)" : std::string();
    return displayPath(files.front(), root) + others;
}

}  // namespace

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

ScanWarning npmModulesMissing(const std::filesystem::path& folder, const std::filesystem::path& root,
                              std::string_view install) {
    const std::string shown = displayPath(folder, root);
    return {
        .kind = ScanWarning::Kind::npmModulesMissing,
        .sentence =
            (shown == "." ? "The project" : shown) +
            " has a lockfile but no node_modules folder: licenses come from the lockfile, without the packages' license files. Run " +
            std::string(install) + " and scan again for a complete NOTICE file.",
    };
}

ScanWarning packedPackagesElsewhere(const std::filesystem::path& folder, const std::filesystem::path& root) {
    const std::string shown = displayPath(folder, root);
    return {
        .kind = ScanWarning::Kind::npmModulesMissing,
        .sentence =
            (shown == "." ? "The project" : shown) +
            " keeps its packages packed outside of the project, so their license files couldn't be read. Run yarn config set enableGlobalCache false, then yarn install, and scan again.",
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

ScanWarning entriesUnreadable(const std::filesystem::path& lockfile, std::size_t count,
                              const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::entriesUnreadable,
        .sentence =
            displayPath(lockfile, root) + " has " +
            (count == 1 ? std::string("an entry") : std::to_string(count) + " entries") +
            " that couldn't be read, so packages may be missing here. Look at the file, mend it and scan again.",
    };
}

ScanWarning packagesNotRead(const std::vector<std::filesystem::path>& files, std::string_view packages,
                            const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::packagesNotRead,
        .sentence =
            shownFirst(files, root) + " lists " + std::string(packages) +
            ", which Quorvane doesn't read: they aren't in this report. Check their licenses in another way.",
    };
}

ScanWarning swiftPackagesNotResolved(const std::vector<std::filesystem::path>& manifests,
                                     const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::swiftPackagesNotResolved,
        .sentence =
            shownFirst(manifests, root) +
            " has no Package.resolved beside it, so its Swift packages can't be listed. Build the project once and scan again.",
    };
}

ScanWarning lockfileIsBinary(const std::filesystem::path& lockfile, const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::lockfileIsBinary,
        .sentence =
            displayPath(lockfile, root) +
            " is a lockfile in Bun's binary form, which can't be read, so its packages are missing here. Run bun install --save-text-lockfile and scan again.",
    };
}

ScanWarning lockfileSetAside(const std::filesystem::path& read, const std::filesystem::path& other,
                             const std::filesystem::path& root) {
    return {
        .kind = ScanWarning::Kind::lockfileSetAside,
        .sentence =
            displayPath(other, root) + " was not read: " + displayName(read) +
            " beside it counts. If the project uses the other one, install its packages with that package manager and scan again.",
    };
}

}  // namespace ScanKit::Warnings

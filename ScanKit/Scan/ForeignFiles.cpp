#include "ScanKit/Scan/ForeignFiles.h"

#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <array>
#include <vector>

namespace ScanKit {
namespace {

struct ForeignRow {
    std::string_view name;
    std::string_view packages;  ///< what such a file lists
};
constexpr auto rows = std::to_array<ForeignRow>({
    {"Podfile.lock", "CocoaPods libraries"},
    {"Cartfile.resolved", "Carthage libraries"},
    {"go.sum", "Go modules"},
    {"Cargo.lock", "Rust crates"},
    {"Gemfile.lock", "Ruby gems"},
    {"composer.lock", "PHP packages"},
    {"gradle.lockfile", "Gradle libraries"},
    {"pom.xml", "Maven libraries"},
    {"packages.lock.json", ".NET packages"},
    {"pubspec.lock", "Dart packages"},
    {"mix.lock", "Elixir packages"},
    {"environment.yml", "Conda packages"},
    {"environment.yaml", "Conda packages"},
});

}  // namespace

bool isForeignFile(std::string_view name) {
    return std::ranges::find(rows, name, &ForeignRow::name) != rows.end();
}

void warnOfForeignFiles(Reading& reading) {
    for (const ForeignRow& row : rows) {
        std::vector<std::filesystem::path> files;
        std::ranges::copy_if(reading.detection.foreignFiles, std::back_inserter(files),
                             [&](const std::filesystem::path& file) { return file.filename() == row.name; });
        if (!files.empty()) {
            reading.warn(Warnings::packagesNotRead(files, row.packages, reading.root));
        }
    }
    if (!reading.detection.swiftManifestsOnly.empty()) {
        reading.warn(Warnings::swiftPackagesNotResolved(reading.detection.swiftManifestsOnly, reading.root));
    }
}

}  // namespace ScanKit

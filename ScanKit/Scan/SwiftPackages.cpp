#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"
#include "ScanKit/Scan/DerivedData.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Scan/Scanner.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/FileSystem.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace ScanKit {
namespace {

/// The project's own checkouts first, then the user's, then those of the development tools.
std::vector<std::filesystem::path> checkoutFolders(const Reading& reading) {
    std::vector<std::filesystem::path> folders = reading.detection.checkoutFolders;
    std::ranges::copy(reading.options.checkoutFolders, std::back_inserter(folders));
    if (reading.options.useXcodeDerivedData) {
        std::ranges::copy(Scanner::derivedDataCheckouts(reading.detection.xcodeProjectNames),
                          std::back_inserter(folders));
    }
    return folders;
}

}  // namespace

void readSwiftPackages(Reading& reading) {
    if (reading.detection.resolvedFiles.empty()) {
        return;  // checked-out packages that nothing pins are not the project's
    }
    std::vector<SwiftPMParser::Pin> pins;
    std::set<std::string> identities;
    for (const std::filesystem::path& file : reading.detection.resolvedFiles) {
        const std::optional<std::string> bytes = readFile(file, largestLockfile);
        auto found = bytes ? SwiftPMParser::resolvedFile(*bytes) : std::nullopt;
        if (!found) {
            reading.warn(Warnings::dependencyFileUnreadable(file, reading.root));
            continue;
        }
        EntryStates states{.own = found->own, .unreadable = found->unreadable};
        for (const SwiftPMParser::Pin& pin : found->pins) {
            ++(identities.insert(pin.identity).second ? states.listed : states.listedAlready);
        }
        std::ranges::move(found->pins, std::back_inserter(pins));
        reading.addLockfile(Ecosystem::swiftpm, file, "Package.resolved", states);
    }
    const std::vector<std::filesystem::path> checkouts = checkoutFolders(reading);
    for (const std::filesystem::path& folder : checkouts) {
        reading.addSource(Ecosystem::swiftpm, folder, "Checked-out packages");
    }
    std::vector<RawDependency> packages = SwiftPMParser::dependencies(pins, checkouts, reading.control);
    const auto isMissing = [](const RawDependency& package) { return !package.folder; };
    if (std::ranges::any_of(packages, isMissing)) {
        reading.warn(Warnings::swiftPackagesNotCheckedOut());
    }
    reading.append(std::move(packages));
}

}  // namespace ScanKit

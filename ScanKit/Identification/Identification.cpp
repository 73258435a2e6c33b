#include "ScanKit/Identification/Identification.h"

#include "ScanKit/Identification/DeclaredLicense.h"
#include "ScanKit/Identification/LicenseDecision.h"
#include "ScanKit/Identification/Notes.h"
#include "ScanKit/Identification/PackageTexts.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <utility>

namespace ScanKit {
namespace {

constexpr std::size_t longestDeclared = 150;
constexpr std::size_t shortenedDeclared = 147;

/// The declared text as the result carries it: whole when short, and never blank.
std::optional<std::string> carriedDeclared(const std::optional<std::string>& declared) {
    if (!declared || Text::isBlank(*declared)) {
        return std::nullopt;
    }
    if (Text::characterCount(*declared) <= longestDeclared) {
        return declared;
    }
    return std::string(Text::prefix(*declared, shortenedDeclared)) + "…";
}

Dependency carriedOver(const RawDependency& package) {
    Dependency dependency{.ecosystem = package.ecosystem,
                          .name = package.name,
                          .version = package.version,
                          .source = package.source,
                          .isDev = package.isDev,
                          .declared = carriedDeclared(package.declared)};
    for (const std::filesystem::path& file : package.licenseFiles) {
        dependency.licenseFileNames.push_back(displayName(file));
    }
    return dependency;
}

}  // namespace

Dependency identify(const RawDependency& package) {
    TextReadings readings;
    return identify(package, readings);
}

Dependency identify(const RawDependency& package, TextReadings& readings) {
    Dependency dependency = carriedOver(package);
    std::vector<PackageText> texts = readPackageTexts(package.licenseFiles);
    std::vector<std::shared_ptr<const TextReading>> read;
    // Thousands of packages share a few hundred texts; each is matched once in a scan.
    for (const PackageText& one : texts) {
        read.push_back(readings.of(one.text));
    }
    const DeclaredLicense declared = declaredLicense(package);
    const LicenseDecision decision = decideLicense(declared, read);
    if (decision.chosen) {
        dependency.license = decision.chosen->description();
        dependency.category = decision.chosen->category();
        dependency.basis = decision.basis;
        dependency.matchScore = decision.matchScore;
    }
    // Last, for the notes speak of what was decided and of what there is to reproduce.
    raiseFlagsAndNotes({package, decision, declared.isCustom, holdText(texts)}, dependency);
    dependency.licenseText = reproduced(std::move(texts));
    dependency.noticeText = reproduced(readPackageTexts(package.noticeFiles));
    return dependency;
}

}  // namespace ScanKit

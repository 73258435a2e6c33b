#include "ScanKit/Identification/Identification.h"

#include "ScanKit/Identification/DeclaredLicense.h"
#include "ScanKit/Identification/LicenseDecision.h"
#include "ScanKit/Identification/Notes.h"
#include "ScanKit/Identification/PackageTexts.h"
#include "ScanKit/Identification/TextSet.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
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
                          .declared = carriedDeclared(package.declared),
                          .way = package.way,
                          .folder = package.folder};
    for (const std::filesystem::path& file : package.licenseFiles) {
        dependency.licenseFileNames.push_back(displayName(file));
    }
    for (const PackedFile& file : package.packedLicenses) {
        dependency.licenseFileNames.push_back(Text::oneLine(file.name));
    }
    return dependency;
}

std::vector<PackageText> textsOf(const std::vector<std::filesystem::path>& files,
                                 const std::vector<PackedFile>& packed, SeenFiles* seen) {
    return packed.empty() ? readPackageTexts(files, seen) : packedTexts(packed);
}

/// What stands in the name of a file that is about what a package bundles, not about the package.
constexpr auto namesOfOthers =
    std::to_array<std::string_view>({"third", "3rd", "bundled", "vendor", "dependencies"});

/// The reading as it counts for the package: what a list of third parties offers as a choice is none of the package's.
std::shared_ptr<const TextReading> ofPackage(std::shared_ptr<const TextReading> reading,
                                             std::string_view file) {
    const std::string name = Text::lowercased(file);
    const bool isAboutOthers = std::ranges::any_of(
        namesOfOthers, [&](std::string_view part) { return name.find(part) != std::string::npos; });
    if (!isAboutOthers || reading->choices.empty()) {
        return reading;
    }
    auto own = std::make_shared<TextReading>(*reading);
    own->choices.clear();
    return own;
}

/// `seen` learns of the files that are read.
Dependency identified(const RawDependency& package, TextReadings& readings, SeenFiles* seen) {
    Dependency dependency = carriedOver(package);
    std::vector<PackageText> texts = textsOf(package.licenseFiles, package.packedLicenses, seen);
    std::vector<std::shared_ptr<const TextReading>> read;
    // Thousands of packages share a few hundred texts; each is matched once in a scan.
    for (PackageText& one : texts) {
        read.push_back(ofPackage(readings.of(one.text), one.name));
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
    dependency.noticeText = reproduced(textsOf(package.noticeFiles, package.packedNotices, seen));
    return dependency;
}

/// A package, and what was made of it.
struct Identified {
    std::shared_ptr<const RawDependency> package;
    Dependency dependency;
};

/// Nearly every package has a folder of its own; of those that share one, the last keeps its place.
std::string cacheName(const RawDependency& package) {
    return package.folder ? package.folder->native() : package.name + "@" + package.version;
}

}  // namespace

void prepareIdentification() {
    standardLicenseTexts();
    referenceLicenseTexts();
}

Dependency identify(const RawDependency& package) {
    TextReadings readings;
    return identified(package, readings, nullptr);
}

Dependency identify(const std::shared_ptr<const RawDependency>& package, TextReadings& readings,
                    FileCache::Round* cache) {
    if (cache == nullptr) {
        return identified(*package, readings, nullptr);
    }
    std::string name = cacheName(*package);
    const auto known = cache->find<Identified>(name);
    if (known && (known->package == package || *known->package == *package)) {
        return known->dependency;
    }
    SeenFiles seen;
    Dependency dependency = identified(*package, readings, &seen);
    cache->keep(std::move(name), std::move(seen),
                std::make_shared<const Identified>(Identified{package, dependency}));
    return dependency;
}

}  // namespace ScanKit

#include "ScanKit/Model/Detection.h"
#include "ScanKit/Model/RawDependency.h"
#include "ScanKit/Model/ScanOptions.h"
#include "ScanKit/Model/ScanResult.h"

#include <algorithm>
#include <unordered_set>

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

TEST(RawValues, ReadBackAndRefuseEveryOtherText) {
    for (const Ecosystem value : allEcosystems) {
        EXPECT_EQ(ecosystemFromRawValue(rawValue(value)), value);
    }
    for (const LicenseCategory value : allLicenseCategories) {
        EXPECT_EQ(licenseCategoryFromRawValue(rawValue(value)), value);
    }
    for (const LicenseBasis value : allLicenseBases) {
        EXPECT_EQ(licenseBasisFromRawValue(rawValue(value)), value);
    }
    for (const Flag value : allFlags) {
        EXPECT_EQ(flagFromRawValue(rawValue(value)), value);
    }
    for (const char* unknown : {"", "agpl", "Swift", "NPM", "weakcopyleft", "npm "}) {
        EXPECT_FALSE(ecosystemFromRawValue(unknown)) << unknown;
        EXPECT_FALSE(licenseCategoryFromRawValue(unknown)) << unknown;
        EXPECT_FALSE(licenseBasisFromRawValue(unknown)) << unknown;
        EXPECT_FALSE(flagFromRawValue(unknown)) << unknown;
    }
    EXPECT_EQ(Flag::severityFromRawValue(2), Flag::Severity::high);
    EXPECT_FALSE(Flag::severityFromRawValue(3));
    EXPECT_FALSE(Flag::severityFromRawValue(-1));
}

TEST(Flag, SortsTheMostSeriousFirst) {
    std::vector<Flag> flags{Flag::noLicenseFile, Flag::missing, Flag::networkCopyleft};
    std::ranges::sort(flags);
    EXPECT_EQ(flags, (std::vector<Flag>{Flag::networkCopyleft, Flag::missing, Flag::noLicenseFile}));
    for (std::size_t i = 1; i < allFlags.size(); ++i) {
        EXPECT_GE(severity(allFlags[i - 1]), severity(allFlags[i]));
    }
}

TEST(Dependency, IsNamedByEcosystemNameAndVersion) {
    const Dependency example{.name = "Example", .version = "1.0.0"};
    EXPECT_EQ(example.id(), "swiftpm:Example@1.0.0");
    Dependency other = example;
    other.ecosystem = Ecosystem::npm;
    EXPECT_NE(other.id(), example.id());
}

TEST(Dependency, NeedsReviewForAnyFlagButAMissingFile) {
    Dependency dependency;
    EXPECT_FALSE(dependency.needsReview());
    dependency.flags = {Flag::noLicenseFile};
    EXPECT_FALSE(dependency.needsReview());
    dependency.flags = {Flag::notOnDisk, Flag::noLicenseFile};
    EXPECT_TRUE(dependency.needsReview());
}

TEST(Dependency, ShowsALicenseOrWhatWasDeclared) {
    Dependency dependency{.license = "MIT"};
    EXPECT_EQ(dependency.licenseDisplay(), "MIT");
    dependency.license.reset();
    EXPECT_EQ(dependency.licenseDisplay(), "None found");
    const std::string forty(40, 'x');
    const std::pair<std::string, std::string> cases[]{
        {"Custom\nsecond line", "Custom"},
        {"Custom\u2028second line", "Custom"},
        {forty, forty},
        {forty + "x", std::string(39, 'x') + "…"},
        {std::string(39, 'x') + "e\u0301", std::string(39, 'x') + "e\u0301"},
        {"", ""},
    };
    for (const auto& [declared, shown] : cases) {
        dependency.declared = declared;
        EXPECT_EQ(dependency.licenseDisplay(), "Unrecognized: " + shown) << declared;
    }
}

TEST(ScanResult, SelectsByDevAndEcosystem) {
    const ScanResult result{.dependencies = {{.ecosystem = Ecosystem::swiftpm, .name = "a"},
                                             {.ecosystem = Ecosystem::npm, .name = "b", .isDev = true},
                                             {.ecosystem = Ecosystem::npm, .name = "c"}}};
    const auto names = [](const std::vector<const Dependency*>& selected) {
        std::string joined;
        for (const Dependency* dependency : selected) {
            joined += dependency->name;
        }
        return joined;
    };
    EXPECT_EQ(names(result.selected(false)), "ac");
    EXPECT_EQ(names(result.selected(true)), "abc");
    EXPECT_EQ(names(result.selected(true, std::set{Ecosystem::npm})), "bc");
    EXPECT_EQ(names(result.selected(true, std::set<Ecosystem>{})), "");
}

TEST(Detection, ListsTheEcosystemsItFound) {
    Detection detection{.checkoutFolders = {"c"}, .xcodeProjectNames = {"App"}};
    EXPECT_TRUE(detection.ecosystems().empty());
    detection.virtualEnvs = {"v"};
    detection.resolvedFiles = {"r"};
    EXPECT_EQ(detection.ecosystems(), (std::vector{Ecosystem::swiftpm, Ecosystem::python}));
    detection.npmManifestsOnly = {"m"};
    EXPECT_EQ(detection.ecosystems().size(), 3U);
}

/// Each record hashes over all of its fields, so that a set tells apart whatever equality tells apart.
TEST(Records, HashOverTheirFields) {
    const Dependency dependency{.name = "a", .flags = {Flag::missing}, .notes = {"n"}};
    Dependency flagged = dependency;
    flagged.flags = {Flag::unknown};
    Dependency scored = dependency;
    scored.matchScore = 0.5;
    EXPECT_EQ((std::unordered_set<Dependency>{dependency, dependency, flagged, scored}.size()), 3U);

    const std::hash<RawDependency> hashRaw;
    const RawDependency raw{.name = "a", .folder = "/p"};
    RawDependency elsewhere = raw;
    elsewhere.folder = "/q";
    EXPECT_EQ(hashRaw(raw), hashRaw(RawDependency(raw)));
    EXPECT_NE(hashRaw(raw), hashRaw(elsewhere));

    EXPECT_NE(std::hash<ScanSource>{}({Ecosystem::npm, "a", "b"}),
              std::hash<ScanSource>{}({Ecosystem::npm, "b", "a"}));
    EXPECT_NE(std::hash<ScanOptions>{}({.ecosystems = {Ecosystem::npm}}), std::hash<ScanOptions>{}({}));
    EXPECT_NE(std::hash<Detection>{}({.poetryLocks = {"p"}}), std::hash<Detection>{}({.virtualEnvs = {"p"}}));
    EXPECT_NE(std::hash<ScanResult>{}({.projectName = "a"}), std::hash<ScanResult>{}({.rootPath = "a"}));
}

}  // namespace
}  // namespace ScanKit

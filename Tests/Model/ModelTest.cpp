#include "Tests/Builders/Printers.h"

#include <algorithm>
#include <unordered_set>

namespace ScanKit {
namespace {

template <typename Values, typename Read>
void expectReadBack(const Values& values, Read read) {
    for (const auto value : values) {
        EXPECT_EQ(read(rawValue(value)), value);
    }
    for (const char* unknown : {"", "agpl", "Swift", "NPM", "weakcopyleft", "npm "}) {
        EXPECT_EQ(read(unknown), std::nullopt) << unknown;
    }
}

TEST(RawValues, ReadBackAndRefuseEveryOtherText) {
    expectReadBack(allEcosystems, ecosystemFromRawValue);
    expectReadBack(allLicenseCategories, licenseCategoryFromRawValue);
    expectReadBack(allLicenseBases, licenseBasisFromRawValue);
    expectReadBack(allFlags, flagFromRawValue);
    EXPECT_EQ(Flag::severityFromRawValue(2), Flag::Severity::high);
    EXPECT_FALSE(Flag::severityFromRawValue(3));
    EXPECT_FALSE(Flag::severityFromRawValue(-1));
}

TEST(Flag, SortsTheMostSeriousFirst) {
    std::vector<Flag> flags{Flag::noLicenseFile, Flag::missing, Flag::networkCopyleft};
    std::ranges::sort(flags);
    EXPECT_EQ(flags, (std::vector<Flag>{Flag::networkCopyleft, Flag::missing, Flag::noLicenseFile}));
    EXPECT_TRUE(std::ranges::is_sorted(allFlags, std::ranges::greater{}, severity));
    EXPECT_EQ(severity(Flag::missing), Flag::Severity::high);
    EXPECT_EQ(severity(Flag::notOnDisk), Flag::Severity::medium);
    EXPECT_EQ(severity(Flag::noLicenseFile), Flag::Severity::low);
}

TEST(Dependency, NeedsReviewForAnyFlagButAMissingFile) {
    EXPECT_FALSE(Dependency{}.needsReview());
    for (const Flag flag : allFlags) {
        EXPECT_EQ((Dependency{.flags = {flag}}.needsReview()), flag != Flag::noLicenseFile)
            << testing::PrintToString(flag);
    }
    EXPECT_TRUE((Dependency{.flags = {Flag::notOnDisk, Flag::noLicenseFile}}.needsReview()));
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
    const ScanResult result{
        .dependencies = {{.name = "a"},
                         {.ecosystem = Ecosystem::npm, .name = "b", .version = "1", .isDev = true},
                         {.ecosystem = Ecosystem::npm, .name = "c"}}};
    const auto ids = [&](bool includeDev, const std::optional<std::set<Ecosystem>>& ecosystems = {}) {
        std::vector<std::string> found;
        for (const Dependency* dependency : result.selected(includeDev, ecosystems)) {
            found.push_back(dependency->id());
        }
        return found;
    };
    using Ids = std::vector<std::string>;
    EXPECT_EQ(ids(false), (Ids{"swiftpm:a@", "npm:c@"}));
    EXPECT_EQ(ids(true), (Ids{"swiftpm:a@", "npm:b@1", "npm:c@"}));
    EXPECT_EQ(ids(true, std::set{Ecosystem::npm}), (Ids{"npm:b@1", "npm:c@"}));
    EXPECT_EQ(ids(false, std::set{Ecosystem::npm}), Ids{"npm:c@"});
    EXPECT_EQ(ids(true, std::set<Ecosystem>{}), Ids{});
}

TEST(Detection, EachListStandsForItsEcosystem) {
    using Ecosystems = std::vector<Ecosystem>;
    struct Case {
        const char* list;
        Detection found;
        Ecosystems ecosystems;
    };
    using enum Ecosystem;
    const Case cases[]{
        {"nothing", {}, {}},
        {"resolvedFiles", {.resolvedFiles = {"x"}}, {swiftpm}},
        {"checkoutFolders", {.checkoutFolders = {"x"}}, {}},
        {"xcodeProjectNames", {.xcodeProjectNames = {"x"}}, {}},
        {"npmLockfiles", {.npmLockfiles = {"x"}}, {npm}},
        {"npmModulesWithoutLock", {.npmModulesWithoutLock = {"x"}}, {npm}},
        {"npmManifestsOnly", {.npmManifestsOnly = {"x"}}, {npm}},
        {"requirementFiles", {.requirementFiles = {"x"}}, {python}},
        {"poetryLocks", {.poetryLocks = {"x"}}, {python}},
        {"virtualEnvs", {.virtualEnvs = {"x"}}, {python}},
        {"several",
         {.resolvedFiles = {"x"}, .npmLockfiles = {"x"}, .npmManifestsOnly = {"x"}, .poetryLocks = {"x"}},
         {swiftpm, npm, python}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(one.found.ecosystems(), one.ecosystems) << one.list;
    }
}

/// Each record hashes over all of its fields, so that a set tells apart whatever equality tells apart.
template <typename Record>
void expectDistinct(const std::vector<Record>& records) {
    const std::unordered_set<Record> set(records.begin(), records.end());
    std::unordered_set<std::size_t> hashes;
    for (const Record& record : records) {
        hashes.insert(std::hash<Record>{}(record));
        EXPECT_TRUE(set.contains(record)) << testing::PrintToString(record);
    }
    EXPECT_EQ(set.size(), records.size()) << testing::PrintToString(records);
    EXPECT_EQ(hashes.size(), records.size()) << testing::PrintToString(records);
}

TEST(Records, HashOverTheirFields) {
    expectDistinct<Dependency>({{},
                                {.name = "a"},
                                {.flags = {Flag::missing}},
                                {.flags = {Flag::unknown}},
                                {.matchScore = 0.5},
                                {.notes = {"n"}}});
    expectDistinct<RawDependency>({{}, {.name = "a"}, {.declared = ""}, {.folder = "/p"}, {.folder = "/q"}});
    expectDistinct<ScanSource>({{Ecosystem::npm, "a", "b"}, {Ecosystem::npm, "b", "a"}});
    expectDistinct<ScanOptions>({{}, {.ecosystems = {Ecosystem::npm}}, {.useXcodeDerivedData = true}});
    expectDistinct<Detection>({{}, {.poetryLocks = {"p"}}, {.virtualEnvs = {"p"}}});
    expectDistinct<ScanResult>({{}, {.projectName = "a"}, {.rootPath = "a"}, {.scannedAt = Date::max()}});
}

}  // namespace
}  // namespace ScanKit

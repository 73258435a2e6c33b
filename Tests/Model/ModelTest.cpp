#include "ScanKit/Model/Coding.h"
#include "Tests/Builders/Printers.h"

#include <algorithm>
#include <unordered_set>

namespace ScanKit {
namespace {

TEST(RawValues, ReadBackAndRefuseEveryOtherText) {
    const auto expectReadBack = [](const auto& values, auto read) {
        for (const auto value : values) {
            EXPECT_EQ(read(rawValue(value)), value);
        }
        for (const char* unknown : {"", "agpl", "Swift", "NPM", "weakcopyleft", "npm "}) {
            EXPECT_EQ(read(unknown), std::nullopt) << unknown;
        }
    };
    expectReadBack(allEcosystems, ecosystemFromRawValue);
    expectReadBack(allLicenseCategories, licenseCategoryFromRawValue);
    expectReadBack(allLicenseBases, licenseBasisFromRawValue);
    expectReadBack(allFlags, flagFromRawValue);
    EXPECT_EQ(Flag::severityFromRawValue(2), Flag::Severity::high);
    EXPECT_EQ(Flag::severityFromRawValue(3), std::nullopt);
    EXPECT_EQ(Flag::severityFromRawValue(-1), std::nullopt);
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
    EXPECT_EQ((Dependency{.declared = "x", .license = "MIT"}.licenseDisplay()), "MIT");
    EXPECT_EQ(Dependency{}.licenseDisplay(), "None found");
    const std::string most(39, 'x');
    const std::pair<std::string, std::string> cases[]{
        {"Custom\nsecond line", "Custom"}, {"Custom\u2028second line", "Custom"}, {most + "x", most + "x"},
        {most + "xx", most + "…"},         {most + "e\u0301", most + "e\u0301"},  {"", ""}};
    for (const auto& [declared, shown] : cases) {
        EXPECT_EQ(Dependency{.declared = declared}.licenseDisplay(), "Unrecognized: " + shown);
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

/// One row a list, so that a list that stands for nothing goes red under its own name.
TEST(Detection, EachListStandsForItsEcosystem) {
    using enum Ecosystem;
    struct Case {
        const char* lists;
        Detection found;
        std::vector<Ecosystem> ecosystems;
    };
    const Case cases[]{
        {"none", {}, {}},
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
         {.resolvedFiles = {"x"}, .npmLockfiles = {"x"}, .poetryLocks = {"x"}},
         {swiftpm, npm, python}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(one.found.ecosystems(), one.ecosystems) << one.lists;
    }
}

/// Each record hashes over all of its fields, so that a set tells apart whatever equality tells apart.
template <typename Record>
void expectDistinct(const std::vector<Record>& records) {
    std::unordered_set<std::size_t> hashes;
    std::ranges::transform(records, std::inserter(hashes, hashes.end()), std::hash<Record>{});
    EXPECT_EQ(hashes.size(), records.size()) << testing::PrintToString(records);
    EXPECT_EQ(std::hash<Record>{}(records.back()), std::hash<Record>{}(Record(records.back())));
}

TEST(Records, HashOverTheirFields) {
    expectDistinct<Dependency>(
        {{}, {.name = "a"}, {.flags = {Flag::unknown}}, {.matchScore = 0.5}, {.notes = {"n"}}});
    expectDistinct<RawDependency>({{}, {.name = "a"}, {.declared = ""}, {.folder = "/p"}, {.folder = "/q"}});
    expectDistinct<ScanSource>({{Ecosystem::npm, "a", "b"}, {Ecosystem::npm, "b", "a"}});
    expectDistinct<ScanOptions>({{}, {.ecosystems = {Ecosystem::npm}}, {.useXcodeDerivedData = true}});
    expectDistinct<Detection>({{}, {.poetryLocks = {"p"}}, {.virtualEnvs = {"p"}}});
    expectDistinct<ScanResult>({{}, {.projectName = "a"}, {.rootPath = "a"}, {.scannedAt = Date::max()}});
}

const Dependency full{
    .ecosystem = Ecosystem::npm,
    .name = "@scope/\"näme\"",
    .version = "1.0.0",
    .source = "https://example.com",
    .isDev = true,
    .declared = "GPL-2.0+",
    .license = "GPL-2.0-or-later",
    .category = LicenseCategory::strongCopyleft,
    .basis = LicenseBasis::metadataAndText,
    .matchScore = 0.996,
    .licenseFileNames = {"LICENSE", "COPYING"},
    .licenseText = "line\nline\n",
    .noticeText = "notice",
    .flags = {Flag::strongCopyleft, Flag::mismatch},
    .notes = {"One.", "Two."},
};

TEST(Coding, ReadsBackWhatItWrote) {
    const Dependency bare{.name = "bare"};
    const ScanSource source{Ecosystem::python, ".venv", "Installed packages"};
    const ScanResult result{"p",      "/p",         Date{std::chrono::seconds{1767621802}},
                            {source}, {full, bare}, {{ScanWarning::Kind::npmModulesMissing, "w"}}};
    EXPECT_EQ(decodedDependency(encoded(full)), full);
    EXPECT_EQ(decodedDependency(encoded(bare)), bare);
    EXPECT_EQ(decodedScanSource(encoded(source)), source);
    EXPECT_EQ(decodedDependency(encoded(Dependency{.name = "\xFF"})), Dependency{.name = "\uFFFD"});
    EXPECT_EQ(decodedScanResult(encoded(result)), result);
}

TEST(Coding, NamesKeysAfterFieldsAndLeavesAbsentOnesOut) {
    std::string json =
        encoded(ScanResult{.sources = {{Ecosystem::npm, "p", "k"}}, .dependencies = {{.name = "bare"}}});
    std::erase_if(json, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_EQ(json, R"({"projectName":"","rootPath":"","scannedAt":"1970-01-01T00:00:00Z",)"
                    R"("sources":[{"ecosystem":"npm","path":"p","kind":"k"}],)"
                    R"("dependencies":[{"ecosystem":"swiftpm","name":"bare","version":"","isDev":false,)"
                    R"("category":"unknown","basis":"none","licenseFileNames":[],"flags":[],"notes":[]}],)"
                    R"("warnings":[]})");
    EXPECT_EQ(encoded(ScanSource{.path = "p"}),
              "{\n  \"ecosystem\" : \"swiftpm\",\n  \"path\" : \"p\",\n  \"kind\" : \"\"\n}");
}

TEST(Coding, RefusesWhatIsNotARecord) {
    const auto changed = [](const std::string& good, std::string_view what, std::string_view replacement) {
        std::string text = good;
        text.replace(text.find(what), what.size(), replacement);
        return text;
    };
    EXPECT_EQ(decodedDependency(changed(encoded(full), "\"isDev\"", "\"more\" : 1, \"isDev\"")), full);
    // Absent by the habit of other programs.
    Dependency undeclared = full;
    undeclared.declared.reset();
    EXPECT_EQ(decodedDependency(changed(encoded(full), "\"GPL-2.0+\"", "null")), undeclared);
    EXPECT_EQ(decodedDependency("[]"), std::nullopt);
    EXPECT_EQ(decodedDependency(""), std::nullopt);
    constexpr std::pair<const char*, const char*> faults[]{
        {"\"npm\"", "\"NPM\""},
        {"\"mismatch\"", "\"odd\""},
        {"\"isDev\"", "\"dev\""},
        {"0.996", "\"0.996\""},
        {"\"One.\"", "1"},
        {"\"notes\"", "\"n\""},
        {"[\n    \"One.\",\n    \"Two.\"\n  ]", "\"One.\""},
    };
    for (const auto& [what, replacement] : faults) {
        EXPECT_EQ(decodedDependency(changed(encoded(full), what, replacement)), std::nullopt) << replacement;
    }
    const std::string result = encoded(ScanResult{.dependencies = {full}});
    EXPECT_TRUE(decodedScanResult(result));
    for (const auto& [what, replacement] :
         {std::pair{"1970-01-01T", "1970-01-01 "}, {"\"npm\"", "\"NPM\""}}) {
        EXPECT_EQ(decodedScanResult(changed(result, what, replacement)), std::nullopt) << replacement;
    }
}

}  // namespace
}  // namespace ScanKit

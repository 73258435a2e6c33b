#include "ScanKit/Reports/ReportSummary.h"

#include "Tests/Reports/SampleResult.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

ReportSummary summaryOf(const ScanResult& result, bool includeDev = false) {
    return ReportSummary(reportedDependencies(result, {.includeDev = includeDev}));
}

Dependency licensed(std::optional<std::string> license, LicenseCategory category,
                    std::vector<Flag> flags = {}) {
    return {.license = std::move(license), .category = category, .flags = std::move(flags)};
}

TEST(ReportSummary, IsEmptyForNoDependencies) {
    EXPECT_EQ(summaryOf(resultOf({})), ReportSummary{});
}

TEST(ReportSummary, LeavesDevOnlyPackagesOutOfEveryCount) {
    Dependency dev = licensed({}, LicenseCategory::strongCopyleft, {Flag::missing});
    dev.isDev = true;
    const ScanResult result = resultOf({dev});
    EXPECT_EQ(summaryOf(result), ReportSummary{});

    const ReportSummary all = summaryOf(result, true);
    EXPECT_EQ(all.total, 1U);
    EXPECT_EQ(all.needsReview, 1U);
    EXPECT_EQ(all.copyleft, 1U);
    EXPECT_EQ(all.unknownOrMissing, 1U);
    EXPECT_EQ(all.licenses.size(), 1U);
}

TEST(ReportSummary, CountsADependencyOnceByItsFlagsCategoryAndLicense) {
    struct Case {
        Dependency dependency;
        std::size_t needsReview, copyleft, unknownOrMissing;
    };
    const Case cases[] = {
        {licensed("MIT", LicenseCategory::permissive), 0, 0, 0},
        {licensed("MIT", LicenseCategory::permissive, {Flag::noLicenseFile}), 0, 0, 0},
        {licensed("MIT", LicenseCategory::permissive, {Flag::mismatch, Flag::notOnDisk}), 1, 0, 0},
        {licensed("MPL-2.0", LicenseCategory::weakCopyleft), 0, 1, 0},
        {licensed("GPL-2.0", LicenseCategory::strongCopyleft), 0, 1, 0},
        {licensed("AGPL-3.0", LicenseCategory::networkCopyleft), 0, 1, 0},
        {licensed("MIT", LicenseCategory::permissive, {Flag::strongCopyleft}), 1, 0, 0},
        {licensed("Custom", LicenseCategory::unknown), 0, 0, 0},
        {licensed("Custom", LicenseCategory::unknown, {Flag::unknown}), 1, 0, 1},
        {licensed({}, LicenseCategory::unknown), 0, 0, 1},
        {licensed({}, LicenseCategory::unknown, {Flag::missing, Flag::unknown}), 1, 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dependency.licenseDisplay() + ", " + std::to_string(c.dependency.flags.size()) +
                     " flags");
        const ReportSummary summary = summaryOf(resultOf({c.dependency}));
        EXPECT_EQ(summary.needsReview, c.needsReview);
        EXPECT_EQ(summary.copyleft, c.copyleft);
        EXPECT_EQ(summary.unknownOrMissing, c.unknownOrMissing);
    }
}

TEST(ReportSummary, GroupsByEcosystemAndCategoryWithoutEmptyEntries) {
    const ReportSummary summary = summaryOf(sampleResult());
    EXPECT_EQ(summary.byEcosystem,
              (std::map<Ecosystem, std::size_t>{
                  {Ecosystem::swiftpm, 2}, {Ecosystem::npm, 2}, {Ecosystem::python, 2}}));
    EXPECT_EQ(summary.byCategory,
              (std::map<LicenseCategory, std::size_t>{{LicenseCategory::permissive, 2},
                                                      {LicenseCategory::weakCopyleft, 1},
                                                      {LicenseCategory::networkCopyleft, 1},
                                                      {LicenseCategory::unknown, 2}}));
}

TEST(ReportSummary, OrdersLicensesByCountThenByCodePoint) {
    using enum LicenseCategory;
    const ScanResult result =
        resultOf({licensed("mit", permissive), licensed({}, unknown), licensed("MIT", permissive),
                  licensed("ÄPL", unknown), licensed("Unknown", proprietary), licensed("Zlib", permissive)});
    EXPECT_EQ(
        summaryOf(result).licenses,
        (std::vector<ReportSummary::License>{{"Unknown", unknown, 2},  // the category of the first of the two
                                             {"MIT", permissive, 1},
                                             {"Zlib", permissive, 1},
                                             {"mit", permissive, 1},
                                             {"ÄPL", unknown, 1}}));
}

}  // namespace
}  // namespace ScanKit

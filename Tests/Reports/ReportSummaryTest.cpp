#include "ScanKit/Reports/ReportSummary.h"

#include "Tests/Reports/SampleResult.h"

#include <gtest/gtest.h>

namespace ScanKit {
namespace {

using enum LicenseCategory;

TEST(ReportSummary, CountsADependencyOnceByItsFlagsCategoryAndLicense) {
    struct Case {
        std::optional<std::string> license;
        LicenseCategory category;
        std::vector<Flag> flags;
        std::size_t needsReview = 0, copyleft = 0, unknownOrMissing = 0;
    };
    const Case cases[] = {
        {"MIT", permissive, {Flag::mismatch, Flag::notOnDisk}, 1},
        {"GPL-2.0", strongCopyleft, {}, 0, 1},
        {"MIT", permissive, {Flag::strongCopyleft}, 1},
        {"Custom", unknown, {Flag::unknown}, 1, 0, 1},
        {{}, unknown, {}, 0, 0, 1},
        {{}, unknown, {Flag::missing, Flag::unknown}, 1, 0, 1},
    };
    for (const auto& [license, category, flags, needsReview, copyleft, unknownOrMissing] : cases) {
        SCOPED_TRACE(license.value_or("none") + ", " + std::to_string(flags.size()) + " flags");
        const ScanResult dev =
            resultOf({{.isDev = true, .license = license, .category = category, .flags = flags}});
        EXPECT_EQ(ReportSummary(reportedDependencies(dev, {})), ReportSummary{}) << "left out of every count";
        const ReportSummary summary(reportedDependencies(dev, {.includeDev = true}));
        EXPECT_EQ(std::tuple(summary.total, summary.needsReview, summary.copyleft, summary.unknownOrMissing),
                  std::tuple(1U, needsReview, copyleft, unknownOrMissing))
            << "all, to review, copyleft, unknown";
    }
}

}  // namespace
}  // namespace ScanKit

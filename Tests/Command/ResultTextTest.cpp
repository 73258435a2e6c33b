#include "QuorvaneCLI/ResultText.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ScanKit::Flag;
using testing::HasSubstr;
using testing::Not;

const ScanKit::ScanResult result{
    .projectName = "project",
    .rootPath = "/project",
    .sources = {{ScanKit::Ecosystem::npm, "package-lock.json", "npm lockfile"}},
    .dependencies = {{.ecosystem = ScanKit::Ecosystem::npm,
                      .name = "a-package-with-a-rather-long-name-of-many-words",
                      .version = "1.0.0",
                      .license = "MIT",
                      .category = ScanKit::LicenseCategory::permissive,
                      .basis = ScanKit::LicenseBasis::metadataAndText,
                      .licenseText = "text"},
                     {.ecosystem = ScanKit::Ecosystem::npm,
                      .name = "evil\x1b[2J",
                      .version = "2.0.0",
                      .declared = "Our terms",
                      .flags = {Flag::unknown},
                      .notes = {"Declared as “Our terms”, which Quorvane doesn't recognize. Read the license "
                                "and record it by hand."}},
                     {.ecosystem = ScanKit::Ecosystem::npm,
                      .name = "gpl",
                      .version = "3.0.0",
                      .isDev = true,
                      .license = "GPL-3.0-only",
                      .category = ScanKit::LicenseCategory::strongCopyleft,
                      .basis = ScanKit::LicenseBasis::metadata,
                      .flags = {Flag::strongCopyleft, Flag::noLicenseFile},
                      .notes = {"GPL: if you ship it."}},
                     {.ecosystem = ScanKit::Ecosystem::npm,
                      .name = "gone",
                      .version = "4.0.0",
                      .license = "ISC",
                      .category = ScanKit::LicenseCategory::permissive,
                      .basis = ScanKit::LicenseBasis::metadata,
                      .flags = {Flag::notOnDisk}}},
};

std::string shown(TextStyle style, bool includeDev = false) {
    return resultText(result, {.projectName = "project", .includeDev = includeDev}, style);
}

TEST(ResultText, AccountsForEveryDependency) {
    EXPECT_THAT(shown({}), HasSubstr("3 dependencies: 2 need review, 0 copyleft, 1 unknown or missing\n"
                                     "  1 with license text, 0 without, 1 not on disk, 1 with no license\n"
                                     "  1 dev-only package is left out"));
    const std::string all = shown({}, true);
    EXPECT_THAT(all, HasSubstr("4 dependencies: 3 need review, 1 copyleft, 1 unknown or missing\n"
                               "  1 with license text, 1 without, 1 not on disk, 1 with no license\n"));
    EXPECT_THAT(all, HasSubstr("gpl (dev)"));
    EXPECT_THAT(all, HasSubstr("Copyleft (GPL); No license file"));
    EXPECT_THAT(all, HasSubstr("      GPL: if you ship it.\n"));
}

TEST(ResultText, IsCutOnlyToATerminalsWidth) {
    for (const std::size_t columns : {200U, 100U, 80U, 72U, 60U, 40U}) {
        const std::string text = shown({.columns = columns}, true);
        for (const std::string_view line : ScanKit::Text::nonEmptyLines(text)) {
            // What names a package stands in full above its notes; everything else fits.
            if (!line.starts_with("  ") || line.starts_with("      ")) {
                EXPECT_LE(Terminal::width(line), columns) << line;
            }
        }
    }
    EXPECT_THAT(shown({}), HasSubstr("a-package-with-a-rather-long-name-of-many-words  1.0.0"));
    EXPECT_THAT(shown({.columns = 80}), HasSubstr("…"));
}

TEST(ResultText, SendsNoEscapeOfAPackageAndColoursOnlyWhenAsked) {
    EXPECT_THAT(shown({}), Not(HasSubstr("\x1b")));
    EXPECT_THAT(shown({}), HasSubstr("evil␛[2J"));
    const std::string coloured = shown({.columns = 120, .colour = true}, true);
    EXPECT_THAT(coloured, HasSubstr("\x1b[31mCopyleft (GPL)\x1b[0m; \x1b[36mNo license file\x1b[0m\n"));
    EXPECT_THAT(coloured, HasSubstr("\x1b[33mUnrecognized license\x1b[0m"));
    EXPECT_THAT(coloured, Not(HasSubstr("\x1b[2J")));
}

}  // namespace

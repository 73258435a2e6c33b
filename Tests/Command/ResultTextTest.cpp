#include "QuorvaneCLI/ResultText.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Reports/Golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ScanKit::Dependency;
using ScanKit::Ecosystem;
using ScanKit::Flag;
using ScanKit::LicenseBasis;
using ScanKit::LicenseCategory;
using testing::HasSubstr;
using testing::Not;

const std::string evil = "evil\x1b[2J";
const ScanKit::ScanResult result{
    .projectName = "project",
    .rootPath = "/project",
    .sources = {{Ecosystem::npm, "package-lock.json", "npm lockfile"}, {Ecosystem::python, evil, evil}},
    .dependencies = {{.ecosystem = Ecosystem::npm,
                      .name = "a-package-with-a-rather-long-name-of-many-words",
                      .version = "1.0.0",
                      .license = "MIT",
                      .category = LicenseCategory::permissive,
                      .basis = LicenseBasis::metadataAndText,
                      .licenseText = "text"},
                     {.name = evil,
                      .version = evil,
                      .declared = evil,
                      .flags = {Flag::unknown},
                      .notes = {evil + ": its own terms, which Quorvane doesn't recognize. Read the license "
                                       "and record it by hand.",
                                "A second note."}},
                     {.ecosystem = Ecosystem::npm,
                      .name = "gpl",
                      .version = "3.0.0",
                      .isDev = true,
                      .license = "GPL-3.0-only",
                      .category = LicenseCategory::strongCopyleft,
                      .basis = LicenseBasis::metadata,
                      .flags = {Flag::strongCopyleft, Flag::noLicenseFile}},
                     {.ecosystem = Ecosystem::npm,
                      .name = "gone",
                      .version = "4.0.0",
                      .license = "ISC",
                      .category = LicenseCategory::permissive,
                      .flags = {Flag::notOnDisk}}},
};

std::string shown(TextStyle style, bool includeDev = true) {
    return resultText(result, {.projectName = "project", .includeDev = includeDev}, style);
}

TEST(ResultText, IsTheSameTextAtTheSameWidth) {
    ScanKit::expectGolden("result-text.txt", shown({}, false));
    ScanKit::expectGolden("result-text-in-72-columns.txt", shown({.columns = 72}));
    ScanKit::expectGolden("result-text-in-40-columns.txt", shown({.columns = 40}));
    std::string coloured;
    for (const char c : shown({.columns = 100, .colour = true})) {
        coloured += c == '\x1b' ? "<ESC>" : std::string(1, c);
    }
    ScanKit::expectGolden("result-text-coloured.txt", coloured);
    EXPECT_THAT(coloured, Not(HasSubstr("<ESC>[2J"))) << "a package's own escape is sent";
    ScanKit::expectGolden("result-text-of-nothing.txt", resultText({}, {}, {}));
}

TEST(ResultText, FitsAnyTerminal) {
    for (std::size_t columns = 16; columns < 200; ++columns) {
        const std::string text = shown({.columns = columns});
        for (const std::string_view line : ScanKit::Text::nonEmptyLines(text)) {
            // What names a package stands in full above its notes, and no word of them is cut.
            if (!line.starts_with("  ") || (line.starts_with("      ") && columns > 20)) {
                EXPECT_LE(Terminal::width(line), columns) << line;
            }
        }
    }
}

}  // namespace

#include "QuorvaneCLI/ResultText.h"

#include "Tests/Reports/SampleResult.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// The sample, every text of which tries to clear the screen, with a long name and notes.
std::string shown(const TextStyle& style, bool includeDev = true) {
    ScanKit::ScanResult result = ScanKit::sampleResult();
    result.dependencies[3].name = "a-package-with-a-rather-long-name-of-many-words";
    result.dependencies[3].notes = {
        "Its own terms: read the license and record it by hand, word for word, please", "A second note."};
    result.dependencies[5].flags = {ScanKit::Flag::mismatch, ScanKit::Flag::notOnDisk,
                                    ScanKit::Flag::noLicenseFile};
    ScanKit::ScanSource& source = result.sources.front();
    ScanKit::Dependency& dependency = result.dependencies[5];
    for (std::string* text : {&result.rootPath, &source.path, &source.kind, &dependency.name,
                              &dependency.version, &*dependency.license, &result.dependencies[3].notes[1]}) {
        *text += "\x1b[2J";
    }
    return resultText(result, {.projectName = "sample\x1b[2J", .includeDev = includeDev}, style);
}

TEST(ResultText, IsTheSameTextAtTheSameWidth) {
    ScanKit::expectGolden("result-text.txt", shown({}, false));
    ScanKit::expectGolden("result-text-in-72-columns.txt", shown({.columns = 72}));
    ScanKit::expectGolden("result-text-in-40-columns.txt", shown({.columns = 40}));
    ScanKit::expectGolden("result-text-coloured.txt", shown({.columns = 100, .colour = true}));
    ScanKit::ScanResult nothing = ScanKit::resultOf({{.isDev = true}});
    nothing.sources = ScanKit::sampleResult().sources;
    ScanKit::expectGolden("result-text-of-nothing.txt", resultText({}, {}, {}) + resultText(nothing, {}, {}));
    EXPECT_THAT(shown({}), testing::Not(testing::HasSubstr("\x1b")))
        << "an escape of the project's own is sent";
}

}  // namespace

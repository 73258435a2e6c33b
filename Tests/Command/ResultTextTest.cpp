#include "QuorvaneCLI/ResultText.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Reports/SampleResult.h"

#include <algorithm>

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
    ScanKit::expectGolden("result-text-in-100-columns.txt", shown({.columns = 100}));
    ScanKit::expectGolden("result-text-in-40-columns.txt", shown({.columns = 40}));
    ScanKit::expectGolden("result-text-coloured.txt", shown({.columns = 100, .colour = true}));
    ScanKit::ScanResult nothing = ScanKit::resultOf({{.isDev = true}});
    nothing.sources = ScanKit::sampleResult().sources;
    ScanKit::expectGolden("result-text-of-nothing.txt", resultText({}, {}, {}) + resultText(nothing, {}, {}));
    EXPECT_THAT(shown({}), testing::Not(testing::HasSubstr("\x1b")))
        << "an escape of the project's own is sent";
}

/// A row of the kind that fills real projects, with two notes that many share.
ScanKit::Dependency sharing(const std::string& name, std::vector<std::string> notes) {
    return {.ecosystem = ScanKit::Ecosystem::npm,
            .name = name,
            .version = "1.0.0",
            .license = "MIT",
            .basis = ScanKit::LicenseBasis::metadataAndText,
            .flags = {ScanKit::Flag::mismatch, ScanKit::Flag::noLicenseFile},
            .notes = std::move(notes)};
}

std::size_t countOf(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(ResultText, SaysANoteOnceAndTheAnswerLast) {
    std::vector<ScanKit::Dependency> many;
    for (int i = 0; i < 73; ++i) {
        many.push_back(sharing("tide-" + std::to_string(i), {"Read the first note.", "Then the second."}));
    }
    many.push_back(sharing("alone", {"Then the second."}));
    const std::string text = resultText(ScanKit::resultOf(many), {}, {.columns = 80});
    EXPECT_EQ(countOf(text, "Read the first note."), 1U);
    EXPECT_EQ(countOf(text, "Then the second."), 1U);
    EXPECT_EQ(countOf(text, "alone 1.0.0 (MIT)"), 1U);
    EXPECT_EQ(countOf(text, "tide-72 1.0.0 (MIT)"), 2U);
    EXPECT_THAT(text,
                testing::EndsWith("\n74 dependencies: 74 need review\n    74  Metadata and file disagree: "
                                  "tide-0 1.0.0, tide-1 1.0.0, tide-2 1.0.0 and\n        71 more\n"));
    many.resize(1);
    many.push_back({.name = "fine"});
    EXPECT_THAT(resultText(ScanKit::resultOf(many), {}, {}),
                testing::HasSubstr("\n2 dependencies: 1 needs review\n"));
    many.erase(many.begin());
    EXPECT_THAT(resultText(ScanKit::resultOf(many), {}, {}),
                testing::EndsWith("\n1 dependency: nothing needs review\n"));
}

TEST(ResultText, FitsEachWidthAndCutsNothing) {
    std::vector<ScanKit::Dependency> dependencies{
        sharing("@scope/a-name-of-many-words-that-no-column-holds", {})};
    dependencies.push_back(
        sharing("b", {std::string("A note of words ") + std::string(20, 'w') + " and more."}));
    dependencies[1].version = "7.0.0-beta.12+build.2026";
    dependencies[1].license = "GPL-2.0-only WITH Classpath-exception-2.0 OR Apache-2.0";
    for (std::size_t columns = 60; columns < 200; ++columns) {
        std::string text = resultText(ScanKit::resultOf(dependencies), {}, {.columns = columns});
        for (const std::string_view line : ScanKit::Text::nonEmptyLines(text)) {
            EXPECT_LE(Terminal::width(line), columns) << line;
        }
        EXPECT_THAT(text, testing::Not(testing::HasSubstr("…"))) << columns;
        EXPECT_THAT(text, testing::HasSubstr("Metadata and file disagree")) << columns;
    }
}

/// All that the command prints of a package, in each place of which this text stands.
std::string shownWith(const std::string& text, const TextStyle& style) {
    ScanKit::ScanResult result = ScanKit::resultOf({sharing("name" + text, {"A note" + text})});
    ScanKit::Dependency& dependency = result.dependencies.front();
    dependency.version = dependency.declared.emplace("1" + text);
    dependency.license = "MIT" + text;
    dependency.way = {text};
    result.rootPath = "/folder" + text;
    result.sources = {{ScanKit::Ecosystem::npm, "path" + text, "kind" + text}};
    return resultText(result, {.projectName = "project" + text}, style) +
           whyText(result, dependency.name, style) + style.warning(Terminal::safe(text));
}

TEST(ResultText, IsTornByNoTextOfAPackage) {
    const std::string hostile[]{"\r",
                                "\n",
                                "\r\n",
                                "\u0085",
                                "\u2028",
                                "\u202E",
                                "\t",
                                "\x1b[2J",
                                std::string(1, 0),
                                "=cmd|' /C'!A0",
                                "\xFF",
                                "@SUM(1)",
                                "% {} {0}",
                                std::string(3'000, 'x')};
    const auto lines = std::ranges::count(shownWith("harmless", {}), '\n');
    for (const std::string& text : hostile) {
        const std::string shown = shownWith(text, {});
        EXPECT_EQ(std::ranges::count(shown, '\n'), lines) << shown;
        for (std::size_t at = 0; at < shown.size();) {
            const char32_t scalar = ScanKit::Text::nextScalar(shown, at);
            EXPECT_FALSE(scalar != '\n' &&
                         (ScanKit::Text::isControl(scalar) || ScanKit::Text::isLineBreak(scalar) ||
                          ScanKit::Text::turnsDirection(scalar)))
                << static_cast<unsigned>(scalar);
        }
        EXPECT_THAT(shownWith(text, {.columns = 80}), testing::HasSubstr("\n1 dependency: 1 needs review\n"));
    }
}

}  // namespace

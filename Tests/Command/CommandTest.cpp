#include "Tests/Builders/TemporaryFolder.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include <sys/stat.h>
#include <sys/wait.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

struct Outcome {
    int status = -1;
    std::string output, error;
};

/// Runs the real command through the shell, which splits and quotes the arguments. The output is read, unless it
/// goes to a device.
Outcome quorvane(const std::string& arguments, const std::string& environment = "",
                 const std::string& device = "") {
    const TemporaryFolder folder;
    const std::string output = device.empty() ? (folder / "output").string() : device;
    const std::string command = environment + " timeout 60 '" QUORVANE_COMMAND "' " + arguments + " >'" +
                                output + "' 2>'" + (folder / "error").string() + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), device.empty() ? contentOf(output) : "", contentOf(folder / "error")};
}

/// A small npm project: a good package, one under the GPL, and one for development alone.
class SampleProject {
public:
    SampleProject() {
        folder.write("package.json", "{}");
        folder.write("package-lock.json", R"({"packages": {
            "node_modules/good": {"version": "1.0", "license": "MIT"},
            "node_modules/gpl": {"version": "2.0", "license": "GPL-3.0-only"},
            "node_modules/linter": {"version": "3.0", "license": "AGPL-3.0-only", "dev": true}}})");
        folder.write("node_modules/good/package.json",
                     R"({"name": "good", "version": "1.0", "license": "MIT"})");
        folder.write("node_modules/good/LICENSE",
                     "Permission is hereby granted, free of charge, to any person obtaining a copy");
        folder.write("node_modules/gpl/package.json",
                     R"({"name": "gpl", "version": "2.0", "license": "GPL-3.0-only"})");
    }
    std::string path() const { return "'" + folder.path().string() + "'"; }
    TemporaryFolder folder;
};

TEST(Command, PrintsATableAndSavesReports) {
    const SampleProject project;
    const TemporaryFolder output;
    const Outcome outcome = quorvane("-o '" + (output / "made/here").string() +
                                     "' --project-name 'My: app' --prepared-by Studio " + project.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, StartsWith("My: app\n"));
    EXPECT_THAT(
        outcome.output,
        HasSubstr(
            "gpl      2.0      npm        GPL-3.0-only  Metadata         Copyleft (GPL); No license file\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("linter")));
    EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(outcome.error, IsEmpty());
    EXPECT_THAT(contentOf(output / "made/here/NOTICE.txt"),
                StartsWith("THIRD-PARTY SOFTWARE NOTICES\nMy: app\n"));
    EXPECT_THAT(contentOf(output / "made/here/My- app Dependencies.csv"), StartsWith("Ecosystem,Package,"));
    EXPECT_THAT(contentOf(output / "made/here/My- app Dependencies.json"),
                HasSubstr("\"project\" : \"My: app\""));
    EXPECT_THAT(contentOf(output / "made/here/My- app License Report.pdf"), StartsWith("%PDF"));
}

TEST(Command, PrintsTheJsonReportAlone) {
    const SampleProject project;
    const TemporaryFolder output;
    const Outcome outcome =
        quorvane("--json --include-dev --formats json -o '" + output.path().string() + "' " + project.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, StartsWith("{\n  \"dependencies\" : ["));
    EXPECT_THAT(outcome.output, HasSubstr("\"name\" : \"linter\""));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1);
}

TEST(Command, FailsOnWhatItIsTold) {
    const SampleProject project;
    const std::pair<const char*, int> cases[]{
        {"strongCopyleft", 1},
        {"review", 1},
        {"missing,noLicenseFile", 1},
        {"networkCopyleft", 0},
        {"missing,unknown", 0},
        {"permissive", 1},
        {"networkCopyleft --include-dev", 1},
        {"missing --fail-on review", 1},
    };
    for (const auto& [names, status] : cases) {
        const Outcome outcome = quorvane(std::string("--fail-on ") + names + " " + project.path());
        EXPECT_EQ(outcome.status, status) << names;
        EXPECT_EQ(outcome.error.empty(), status == 0) << names;
    }
    EXPECT_THAT(quorvane("--fail-on strongCopyleft " + project.path()).error,
                HasSubstr("  gpl 2.0: GPL-3.0-only\n"));
}

TEST(Command, RefusesWrongUsageInOneLineWithStatusTwo) {
    const SampleProject project;
    const std::string folder = project.path();
    const std::string file = "'" + (project.folder / "package.json").string() + "'";
    const std::pair<std::string, const char*> cases[]{
        {"", "FOLDER"},
        {"--nonsense " + folder, "--nonsense"},
        {"--formats json " + folder, "--output"},
        {"-o /tmp --formats doc " + folder, "\"doc\""},
        {"--ecosystem cargo " + folder, "\"cargo\""},
        {"--fail-on nothing " + folder, "\"nothing\""},
        {"/does/not/exist", "/does/not/exist: No such file or directory"},
        {file, "Not a directory"},
        {folder + " " + folder, "quorvane: "},
    };
    for (const auto& [arguments, word] : cases) {
        const Outcome outcome = quorvane(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.output, IsEmpty()) << arguments;
        EXPECT_THAT(outcome.error, StartsWith("quorvane: ")) << arguments;
        EXPECT_THAT(outcome.error, HasSubstr(word)) << arguments;
    }
    EXPECT_EQ(quorvane("--help").status, 0);
    EXPECT_THAT(quorvane("--help").output, HasSubstr("--fail-on"));
    EXPECT_THAT(quorvane("--version").output, StartsWith("quorvane "));
}

TEST(Command, SaysWhyAReportCannotBeSaved) {
    const SampleProject project;
    const TemporaryFolder output{{"file", ""}};
    const Outcome below = quorvane("-o '" + (output / "file/below").string() + "' " + project.path());
    EXPECT_EQ(below.status, 2);
    EXPECT_THAT(below.error, StartsWith("Couldn't save: "));
    output.makeFolder("NOTICE.txt");
    const Outcome taken =
        quorvane("--formats notice,csv -o '" + output.path().string() + "' " + project.path());
    EXPECT_EQ(taken.status, 2);
    EXPECT_THAT(taken.error, HasSubstr("Couldn't save: "));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 2)
        << "nothing else is left there";
}

TEST(Command, SaysWhyItsOutputDoesNotArrive) {
    const TemporaryFolder project{{"requirements.txt", "coral==1.0\n"}};
    std::string many;
    for (int i = 0; i < 2000; ++i) {
        many += "coral" + std::to_string(i) + "\n";
    }
    for (const std::string& requirements : {std::string(), many}) {  // within the buffer, and beyond it
        project.write("requirements.txt", requirements);
        const Outcome full = quorvane("'" + project.path().string() + "'", "", "/dev/full");
        EXPECT_EQ(full.status, 2);
        EXPECT_THAT(full.error, HasSubstr("quorvane: standard output: No space left on device\n"));
    }
}

TEST(Command, TakesAFolderNameAsItIsWritten) {
    const TemporaryFolder project{
        {"Package.resolved",
         R"({"pins": [{"identity": "lantern", "location": "l", "state": {"version": "1"}}]})"},
        {"[a,b]/lantern/LICENSE",
         "Permission is hereby granted, free of charge, to any person obtaining a copy"}};
    const Outcome outcome =
        quorvane("--no-derived-data --checkouts '[a,b]' .", "cd '" + project.path().string() + "' &&");
    EXPECT_THAT(outcome.output, HasSubstr("[a,b] (Checked-out packages)"));
    EXPECT_THAT(outcome.output, HasSubstr("MIT"));
}

TEST(Command, ReadsOnlyTheEcosystemsAndEnvironmentsAskedFor) {
    const SampleProject project;
    project.folder.write("env/site-packages/six-1.16.dist-info/METADATA",
                         "Name: six\nVersion: 1.16\nLicense: MIT\n");
    const std::string environment = "--python-env '" + (project.folder / "env/site-packages").string() + "' ";
    const Outcome both = quorvane(environment + project.path());
    EXPECT_THAT(both.output, HasSubstr("six"));
    EXPECT_THAT(both.output, HasSubstr("gpl"));
    const Outcome python = quorvane("--ecosystem python " + environment + project.path());
    EXPECT_THAT(python.output, HasSubstr("six"));
    EXPECT_THAT(python.output, Not(HasSubstr("gpl")));
}

TEST(Command, GivesTheSameBytesInAnyLocaleAndFromAnyPlace) {
    const SampleProject project;
    const TemporaryFolder elsewhere;
    std::filesystem::copy(project.folder.path(), elsewhere / "copy",
                          std::filesystem::copy_options::recursive);
    const std::string date = "SOURCE_DATE_EPOCH=1767621802 TZ=UTC";
    const std::string options = "--json --project-name same ";
    const std::string first = quorvane(options + project.path(), date).output;
    EXPECT_THAT(first, HasSubstr("2026-01-05T14:03:22Z"));
    EXPECT_EQ(quorvane(options + "'" + (elsewhere / "copy").string() + "'", date).output, first);
    EXPECT_EQ(quorvane(options + project.path(), date + " LC_ALL=tr_TR.UTF-8 LANG=tr_TR.UTF-8").output,
              first);
    EXPECT_EQ(quorvane(options + project.path(), date + " taskset -c 0").output, first);
}

/// Whatever a folder holds, the scan ends and says what it could read.
TEST(Command, SurvivesAHostileFolder) {
    const SampleProject project;
    const auto& folder = project.folder;
    ASSERT_EQ(mkfifo((folder / "requirements.txt").c_str(), 0600), 0);
    folder.write("deep/package.json", "{}");
    folder.write("deep/package-lock.json", std::string(200'000, '['));
    folder.write("Package.resolved", std::string("{\"pins\": [{}, 1]}"));
    folder.write("node_modules/good/COPYING", std::string("binary\0file", 11));
    folder.write("node_modules/ba\xFF\nd/package.json",
                 R"({"name": "esc\u001b[2Jape", "version": "1", "license": 7})");
    folder.link("node_modules/loop", "../node_modules");
    folder.link("node_modules/gpl/LICENSE", "/etc/passwd");
    folder.link("itself", ".");
    std::filesystem::resize_file(folder.write("node_modules/gpl/COPYING", "x"), std::uintmax_t{1} << 40);
    const Outcome outcome = quorvane("--include-dev " + project.path());
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_THAT(outcome.output, HasSubstr("gpl"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("\x1b")));
    EXPECT_THAT(outcome.output, Not(HasSubstr("root:")));
}

}  // namespace

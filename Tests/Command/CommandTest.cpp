#include "QuorvaneCLI/CommandOptions.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/Golden.h"

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

using ScanKit::contains;
using ScanKit::Ecosystem;
using ScanKit::ReportFormats;
using testing::ElementsAre;
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

CommandOptions read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "quorvane");
    auto command = readCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto* end = std::get_if<CommandEnd>(&command);
    EXPECT_EQ(end, nullptr) << end->error;
    return end != nullptr ? CommandOptions{} : std::get<CommandOptions>(command);
}

TEST(CommandOptions, ReadsEachOption) {
    const std::filesystem::path here = std::filesystem::current_path();
    const CommandOptions options = read({"--output",
                                         "a/../out",
                                         "--formats",
                                         "csv,json",
                                         "--json",
                                         "--include-dev",
                                         "--project-name",
                                         "Name",
                                         "--prepared-for",
                                         "Client",
                                         "--prepared-by",
                                         "Studio",
                                         "--ecosystem",
                                         "npm",
                                         "--ecosystem",
                                         "python",
                                         "--checkouts",
                                         "[a,b]",
                                         "--checkouts",
                                         "/c",
                                         "--python-env",
                                         "/e",
                                         "--python-env",
                                         "f,g",
                                         "--no-derived-data",
                                         "--fail-on",
                                         "missing,review",
                                         "--fail-on",
                                         "permissive",
                                         "--quiet",
                                         "folder"});
    EXPECT_EQ(options.folder, here / "folder");
    EXPECT_EQ(options.output, here / "out");
    EXPECT_EQ(options.formats, ReportFormats::csv | ReportFormats::json);
    EXPECT_TRUE(options.printJson && options.includeDev && options.quiet && !options.useDerivedData);
    EXPECT_EQ(options.projectName, "Name");
    EXPECT_EQ(options.preparedFor, "Client");
    EXPECT_EQ(options.preparedBy, "Studio");
    EXPECT_THAT(options.ecosystems, ElementsAre(Ecosystem::npm, Ecosystem::python));
    EXPECT_THAT(options.checkouts, ElementsAre(here / "[a,b]", "/c"));
    EXPECT_THAT(options.pythonEnvironments, ElementsAre("/e", here / "f,g"));
    EXPECT_TRUE(options.failOn.isMetBy({.category = ScanKit::LicenseCategory::permissive}));
    EXPECT_FALSE(options.failOn.isMetBy({.category = ScanKit::LicenseCategory::strongCopyleft}));

    for (const auto& [name, format] :
         {std::pair{"pdf", ReportFormats::pdf}, {"notice", ReportFormats::notice}}) {
        EXPECT_EQ(read({"-o", "/", "--formats", name, "."}).formats, format) << name;
    }
    for (const char* option : {"--ecosystem", "--checkouts", "--python-env", "--project-name"}) {
        EXPECT_EQ(read({option, "npm", "/folder"}).folder, "/folder") << option << " takes one value";
    }
    const CommandOptions usual = read({"/folder/"});
    using enum ReportFormats;
    EXPECT_EQ(usual.formats, pdf | notice | csv | json);
    EXPECT_TRUE(!usual.output && !usual.projectName && usual.ecosystems.empty() && usual.failOn.isEmpty());
    EXPECT_TRUE(!usual.printJson && !usual.includeDev && !usual.quiet && usual.useDerivedData);
}

TEST(Command, ReadsTheSampleProject) {
    const std::string folder = QUORVANE_SAMPLE_PROJECT;
    const std::string arguments = "--no-derived-data --include-dev '" + folder + "'";
    const Outcome outcome = quorvane(arguments);
    std::string output = outcome.output;
    ASSERT_NE(output.find(folder), std::string::npos) << outcome.error;
    ScanKit::expectGolden("sample-project.txt", output.replace(output.find(folder), folder.size(), "FOLDER"));
    ScanKit::expectGolden("sample-project.json",
                          quorvane("--json " + arguments, "TZ=UTC SOURCE_DATE_EPOCH=1767621802").output);
    EXPECT_THAT(outcome.error, StartsWith("Warning: Some Swift packages aren't checked out"));
    EXPECT_EQ(outcome.status, 0);
}

TEST(Command, SavesReports) {
    const SampleProject project;
    const TemporaryFolder output;
    const Outcome outcome =
        quorvane("-o '" + (output / "made/here").string() +
                 "' --project-name 'My: app' --prepared-for Client --prepared-by Studio " + project.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, StartsWith("My: app\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("linter")));
    EXPECT_THAT(outcome.error, IsEmpty());
    EXPECT_THAT(contentOf(output / "made/here/NOTICE.txt"),
                StartsWith("THIRD-PARTY SOFTWARE NOTICES\nMy: app\n"));
    EXPECT_THAT(contentOf(output / "made/here/My- app Dependencies.csv"), StartsWith("Ecosystem,Package,"));
    EXPECT_THAT(contentOf(output / "made/here/My- app Dependencies.json"),
                HasSubstr("\"project\" : \"My: app\""));
    EXPECT_EQ(
        std::system((QUORVANE_PDFTOTEXT " '" + (output / "made/here/My- app License Report.pdf").string() +
                     "' - | grep -q 'Prepared for Client *· *Prepared by Studio'")
                        .c_str()),
        0);
}

TEST(Command, PrintsTheJsonReportAloneAndSavesOnlyWhatIsAskedFor) {
    const SampleProject project;
    const TemporaryFolder output;
    const Outcome outcome =
        quorvane("--json --include-dev --formats json -o '" + output.path().string() + "' " + project.path());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("\"name\" : \"linter\""));
    const std::string name = project.folder.path().filename().string() + " Dependencies.json";
    EXPECT_EQ(outcome.output, contentOf(output / name) + "\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output.path()), {}), 1);
}

TEST(Command, FailsOnWhatItIsTold) {
    const SampleProject project;
    const std::string met = "These dependencies meet --fail-on:\n", good = "  good 1.0: MIT\n",
                      gpl = "  gpl 2.0: GPL-3.0-only\n";
    const std::pair<const char*, std::string> cases[]{
        {"strongCopyleft", met + gpl},
        {"review", met + gpl},
        {"missing,noLicenseFile", met + gpl},
        {"networkCopyleft", ""},
        {"missing,unknown", ""},
        {"permissive --fail-on review", met + good + gpl},
        {"networkCopyleft --include-dev", met + "  linter 3.0: AGPL-3.0-only\n"},
    };
    for (const auto& [names, listed] : cases) {
        const Outcome outcome = quorvane(std::string("--fail-on ") + names + " " + project.path());
        EXPECT_EQ(outcome.status, listed.empty() ? 0 : 1) << names;
        EXPECT_EQ(outcome.error, listed) << names;
    }
}

TEST(Command, RefusesWrongUsageInOneLineWithStatusTwo) {
    const SampleProject project;
    const std::string folder = project.path();
    const std::string file = "'" + (project.folder / "package.json").string() + "'";
    const std::pair<std::string, const char*> cases[]{
        {"", "FOLDER"},
        {"--nonsense " + folder, "--nonsense"},
        {"--formats json " + folder, "--output"},
        {"-o /tmp --formats doc " + folder, "--formats takes pdf, notice, csv and json, not \"doc\"\n"},
        {"--ecosystem cargo " + folder, "--ecosystem takes swiftpm, npm or python, not \"cargo\"\n"},
        {"--fail-on nothing " + folder, "--fail-on takes categories, flags and review, not \"nothing\"\n"},
        {"/does/not/exist", "/does/not/exist: No such file or directory\n"},
        {file, "Not a directory\n"},
        {folder + " " + folder, "quorvane: "},
        {"--ecosystem npm python " + folder, "quorvane: "},
        {"--checkouts a b " + folder, "quorvane: "},
    };
    for (const auto& [arguments, word] : cases) {
        const Outcome outcome = quorvane(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.output, IsEmpty()) << arguments;
        EXPECT_THAT(outcome.error, StartsWith("quorvane: ")) << arguments;
        EXPECT_THAT(outcome.error, HasSubstr(word)) << arguments;
    }
    for (const std::string help : {"--help", "-h"}) {
        EXPECT_EQ(quorvane(help).status, 0);
        EXPECT_THAT(quorvane(help).output, HasSubstr("--fail-on"));
    }
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

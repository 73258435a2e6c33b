#include "QuorvaneCLI/CommandOptions.h"

#include "QuorvaneCLI/OptionTable.h"
#include "ScanKit/Support/Text.h"
#include "Tests/Builders/TemporaryFolder.h"
#include "Tests/Reports/SampleResult.h"

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

using ScanKit::Ecosystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
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
                 const std::string& device = "", const std::string& program = "'" QUORVANE_COMMAND "'") {
    const TemporaryFolder folder;
    const std::string output = device.empty() ? (folder / "output").string() : device;
    const std::string command = environment + " timeout 60 " + program + " " + arguments + " >'" + output +
                                "' 2>'" + (folder / "error").string() + "' </dev/null";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), device.empty() ? contentOf(output) : "", contentOf(folder / "error")};
}

std::string quoted(const std::filesystem::path& path) {
    return "'" + path.string() + "'";
}

constexpr const char* mit = "Permission is hereby granted, free of charge, to any person obtaining a copy";

/// A small npm project: a good package, one under the GPL, and one for development alone.
TemporaryFolder smallProject() {
    return {
        {"package.json", "{}"},
        {"package-lock.json", R"({"packages": {
                "node_modules/good": {"version": "1.0", "license": "MIT"},
                "node_modules/gpl": {"version": "2.0", "license": "GPL-3.0-only"},
                "node_modules/linter": {"version": "3.0", "license": "AGPL-3.0-only", "dev": true}}})"},
        {"node_modules/good/package.json", R"({"name": "good", "version": "1.0", "license": "MIT"})"},
        {"node_modules/good/LICENSE", mit},
        {"node_modules/gpl/package.json", R"({"name": "gpl", "version": "2.0", "license": "GPL-3.0-only"})"}};
}

CommandOptions read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "quorvane");
    const auto command = readCommandLine(static_cast<int>(arguments.size()), arguments.data());
    const auto* options = std::get_if<CommandOptions>(&command);
    EXPECT_NE(options, nullptr) << std::get<CommandEnd>(command).error;
    return options != nullptr ? *options : CommandOptions{};
}

TEST(Command, SaysWhyAPackageIsThere) {
    const TemporaryFolder project{{"package.json", "{}"},
                                  {"package-lock.json", R"({"packages": {"": {"dependencies": {"a": "1"}},
            "node_modules/a": {"version": "1", "dependencies": {"b": "1"}}, "node_modules/b": {"version": "2"}}})"},
                                  {"requirements.txt", "b==3\n"}};
    EXPECT_EQ(quorvane("--quiet --why b " + quoted(project.path())).output,
              "  b 2 (npm)\n    the project → a@1 → b@2\n"
              "  b 3 (Python)\n    No file that was read says who needs it.\n");
    EXPECT_EQ(quorvane("--quiet --why c " + quoted(project.path())).output, "No dependency is named c.\n");
}

TEST(Command, ReadsTheWorkspaceSample) {
    const Outcome found = quorvane("--quiet --include-dev " + quoted(QUORVANE_WORKSPACE_SAMPLE));
    EXPECT_THAT(
        found.output,
        AllOf(HasSubstr("(pnpm lockfile; 5 entries: 4 listed, 1 optional and not installed)"),
              HasSubstr("\n      bell-buoy 2.0.1 (dev; GPL-3.0-only)\n"),
              HasSubstr("\n4 dependencies: 2 need review\n     1  Copyleft (GPL): bell-buoy 2.0.1 (dev)\n"),
              HasSubstr("“The lamp made with this Software must carry the words")));
    EXPECT_THAT(found.error, IsEmpty());
}

TEST(CommandOptions, ReadsEachOption) {
    const std::filesystem::path here = std::filesystem::current_path();
    const CommandOptions options = read(
        {"--output=a/../out", "--formats=csv,json", "--json", "--include-dev", "--project-name=Name",
         "--ecosystem=npm", "--ecosystem=python", "--checkouts=[a,b]", "--checkouts=/c", "--python-env=/e",
         "--python-env=f,g", "--no-derived-data", "--fail-on=missing,review", "--quiet", "folder"});
    EXPECT_EQ(options.folder, here / "folder");
    EXPECT_EQ(options.output, here / "out");
    EXPECT_TRUE(options.printJSON && options.includeDev && options.quiet && !options.useDerivedData);
    EXPECT_EQ(options.projectName, "Name");
    EXPECT_THAT(options.ecosystems, ElementsAre(Ecosystem::npm, Ecosystem::python));
    EXPECT_THAT(options.checkouts, ElementsAre(here / "[a,b]", "/c"));
    EXPECT_THAT(options.pythonEnvironments, ElementsAre("/e", here / "f,g"));
    using enum ScanKit::ReportFormats;
    EXPECT_EQ(options.formats, csv | json);
    EXPECT_EQ(read({"-o", "/", "--formats", "pdf", "."}).formats, pdf);
    const std::pair<const char*, const char*> takingOne[]{
        {"--ecosystem", "npm"},    {"--checkouts", "/c"},    {"--python-env", "/e"},
        {"--project-name", "npm"}, {"--formats", "csv,pdf"}, {"--fail-on", "review,missing"}};
    for (const auto& [option, value] : takingOne) {
        EXPECT_EQ(read({"-o", "/", option, value, "/folder"}).folder, "/folder") << option;
    }
    EXPECT_EQ(read({"-o", "/", "--formats", "pdf,csv", "--formats", "json", "."}).formats, pdf | csv | json);
    const CommandOptions usual = read({"."});
    EXPECT_EQ(usual.formats, pdf | notice | csv | json);
    EXPECT_TRUE(!usual.printJSON && !usual.includeDev && !usual.quiet && usual.useDerivedData);
}

TEST(Command, ReadsTheSampleProjectFromAnyPlaceAndInAnyLocale) {
    const std::filesystem::path sample = QUORVANE_SAMPLE_PROJECT;
    const std::string options = "--no-derived-data --include-dev ";
    const Outcome outcome = quorvane(options + ".", "cd " + quoted(sample) + " &&");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.error, StartsWith("Warning: Some Swift packages aren't checked out"));
    std::string output = outcome.output;
    ASSERT_NE(output.find(sample), std::string::npos) << output;
    ScanKit::expectGolden("sample-project.txt",
                          output.replace(output.find(sample), sample.string().size(), "FOLDER"));

    const TemporaryFolder elsewhere;
    std::filesystem::copy(sample, elsewhere / "sample-project", std::filesystem::copy_options::recursive);
    const std::string json = options + "--json " + quoted(elsewhere / "sample-project");
    for (const std::string environment : {"", "LC_ALL=tr_TR.UTF-8 LANG=tr_TR.UTF-8", "taskset -c 0"}) {
        ScanKit::expectGolden("sample-project.json",
                              quorvane(json, "TZ=UTC SOURCE_DATE_EPOCH=1767621802 " + environment).output);
    }
}

TEST(Command, SavesTheReportsWithTheNamesGiven) {
    const TemporaryFolder project = smallProject(), output;
    const std::filesystem::path folder = output / "made/here";
    const std::string names = "--project-name 'My: app' --prepared-for Client --prepared-by Studio ";
    const Outcome outcome = quorvane(
        "--json --include-dev " + names + "-o " + quoted(folder) + " " + quoted(project.path()), "LC_ALL=C");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.error, IsEmpty());
    EXPECT_THAT(outcome.output, HasSubstr("\"name\" : \"linter\""));
    EXPECT_EQ(outcome.output, contentOf(folder / "My- app Dependencies.json") + "\n");
    EXPECT_THAT(contentOf(folder / "NOTICE.txt"), HasSubstr("NOTICES\nMy: app\n"));
    const std::string text = QUORVANE_PDFTOTEXT " " + quoted(folder / "My- app License Report.pdf");
    EXPECT_EQ(std::system((text + " - | grep -q 'Prepared for Client *· *Prepared by Studio'").c_str()), 0);
    const auto widthIs = [&](const std::string& points) {
        return std::system((text + " -bbox - | grep -q 'page width=\"" + points + "'").c_str()) == 0;
    };
    EXPECT_TRUE(widthIs("612"));
    quorvane("--formats pdf --paper a4 " + names + "-o " + quoted(folder) + " " + quoted(project.path()));
    EXPECT_TRUE(widthIs("595"));
    quorvane("--formats csv -o " + quoted(output / "other") + " " + quoted(project.path()));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(output / "other"), {}), 1);
}

#ifndef __APPLE__
TEST(Command, DoesWithoutThePartThatMakesPDFs) {
    const TemporaryFolder copy, project = smallProject(), reports;
    std::filesystem::copy_file(QUORVANE_COMMAND, copy / "quorvane");
    const std::string program = quoted(copy / "quorvane");
    const std::string libraries = quorvane("", "", "", "env LD_TRACE_LOADED_OBJECTS=1 " + program).output;
    EXPECT_THAT(libraries, AllOf(HasSubstr("libicuuc"), Not(HasSubstr("pango")), Not(HasSubstr("libqpdf"))));

    const auto save = [&](const std::string& formats) {
        const std::string arguments = quoted(project.path()) + " -o " + quoted(reports.path());
        return quorvane(arguments + " --formats " + formats, "", "", program);
    };
    EXPECT_EQ(save("csv,notice,html").status, 0);
    const Outcome asked = save("csv,pdf");
    EXPECT_EQ(asked.status, 2);
    EXPECT_THAT(asked.error, AllOf(HasSubstr("Couldn't save"), HasSubstr("License Report.pdf: "),
                                   HasSubstr("can't be loaded: quorvane-pdf.so")));
}
#endif

TEST(Command, FailsOnWhatItIsTold) {
    const TemporaryFolder project = smallProject();
    const std::string met = "These dependencies meet --fail-on:\n", gpl = "  gpl 2.0: GPL-3.0-only\n";
    const std::pair<const char*, std::string> cases[]{
        {"strongCopyleft", met + gpl},
        {"review", met + gpl},
        {"missing,noLicenseFile", met + gpl},
        {"networkCopyleft,missing", ""},
        {"permissive --fail-on review", met + "  good 1.0: MIT\n" + gpl},
        {"networkCopyleft --include-dev", met + "  linter 3.0: AGPL-3.0-only\n"},
    };
    for (const auto& [names, listed] : cases) {
        const Outcome outcome = quorvane(std::string("--fail-on ") + names + " " + quoted(project.path()));
        EXPECT_EQ(outcome.status, listed.empty() ? 0 : 1) << names;
        EXPECT_EQ(outcome.error, listed) << names;
    }
    // Nothing can be promised of a file that was not read.
    project.link("requirements.txt", "gone");
    EXPECT_EQ(quorvane(quoted(project.path())).status, 0);
    const Outcome unanswered = quorvane("--fail-on networkCopyleft " + quoted(project.path()));
    EXPECT_EQ(unanswered.status, 2);
    EXPECT_THAT(unanswered.error, HasSubstr("quorvane: --fail-on can't be answered"));
}

TEST(Command, RefusesWrongUsageInOneLineWithStatusTwo) {
    const TemporaryFolder project = smallProject();
    const std::string folder = quoted(project.path());
    const std::string file = quoted(project / "package.json");
    const std::pair<std::string, const char*> cases[]{
        {"", "FOLDER"},
        {"--nonsense " + folder, "--nonsense"},
        {"--formats json " + folder, "--output"},
        {"-o /tmp --formats doc " + folder, "--formats takes pdf, notice, csv, json and html, not \"doc\"\n"},
        {"--paper a5 " + folder, "--paper takes a4 or letter, not \"a5\"\n"},
        {"--ecosystem cargo " + folder, "--ecosystem takes swiftpm, npm or python, not \"cargo\"\n"},
        {"--color red " + folder, "--color takes auto, always or never, not \"red\"\n"},
        {"--fail-on nothing " + folder, "--fail-on takes categories, flags and review, not \"nothing\"\n"},
        {"/does/not/exist", "/does/not/exist: No such file or directory\n"},
        {file, "Not a directory\n"},
        {folder + " --checkouts /does/not/exist", "/does/not/exist: No such file or directory\n"},
        {folder + " --python-env " + file, "Not a directory\n"},
        {folder + " " + folder, "quorvane: "},
        {"--ecosystem npm python " + folder, "quorvane: "},
    };
    for (const auto& [arguments, word] : cases) {
        const Outcome outcome = quorvane(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_THAT(outcome.output, IsEmpty()) << arguments;
        EXPECT_THAT(outcome.error, AllOf(StartsWith("quorvane: "), HasSubstr(word))) << arguments;
    }
}

TEST(CommandOptions, ReadsWhatTheHelpNames) {
    const std::string help = quorvane("-h").output;
    for (const std::string_view line : ScanKit::Text::nonEmptyLines(help)) {
        EXPECT_LE(line.size(), 80U) << line;
    }
    for (const OptionRow& row : optionRows()) {
        const std::string option = "--" + std::string(row.name);
        EXPECT_THAT(help,
                    HasSubstr(option + (row.valueName.empty() ? "" : " " + std::string(row.valueName))));
        if (row.name == "help" || row.name == "version") {
            continue;
        }
        std::vector<std::string> values = choicesFor(row.value);
        values.push_back(values.empty() ? "x" : values.front());
        for (const std::string& value : values) {
            std::vector<const char*> arguments{"-o", "/", option.c_str()};
            arguments.erase(arguments.begin(), arguments.begin() + (row.name == "output" ? 2 : 0));
            if (row.value != OptionValue::none) {
                arguments.push_back(value.c_str());
            }
            arguments.push_back("/folder");
            EXPECT_EQ(read(arguments).folder, "/folder") << option << " " << value;
        }
    }
    EXPECT_EQ(read({"--color=never", "."}).colour, ColourUse::never);
    EXPECT_THAT(quorvane("--version").output,
                testing::ContainsRegex(
                    "^quorvane [0-9.]+( \\([0-9a-f]+( with changes)?, [0-9]+-[0-9]+-[0-9]+\\))?\n$"));
}

TEST(Command, SendsColoursWhereTheyAreAskedFor) {
    const TemporaryFolder project = smallProject();
    const std::pair<const char*, bool> cases[]{
        {"", false}, {"--color auto ", false}, {"--color=never ", false}, {"--color always ", true}};
    for (const auto& [option, isColoured] : cases) {
        const Outcome outcome = quorvane(option + quoted(project.path()), "NO_COLOR=1");
        EXPECT_EQ(outcome.output.find("\x1b[31mCopyleft (GPL)\x1b[0m") != std::string::npos, isColoured)
            << option;
        EXPECT_EQ(outcome.output.find('\x1b') != std::string::npos, isColoured) << option;
    }
}

TEST(Command, SaysWhyWhatItWritesDoesNotArrive) {
    const TemporaryFolder project, output{{"file", ""}};
    for (const std::size_t letters : {1U, 100'000U}) {  // within the buffer, and beyond it
        project.write("requirements.txt", std::string(letters, 'x') + "\n");
        const Outcome full = quorvane(quoted(project.path()), "", "/dev/full");
        EXPECT_EQ(full.status, 2);
        EXPECT_THAT(full.error, EndsWith("quorvane: standard output: No space left on device\n"));
    }
    const Outcome lost = quorvane("-o " + quoted(output / "file/below") + " " + quoted(project.path()));
    EXPECT_EQ(lost.status, 2);
    EXPECT_THAT(lost.error,
                EndsWith("Couldn't save " + (output / "file/below").string() + ": Not a directory\n"));
    output.makeFolder("NOTICE.txt");
    const Outcome taken =
        quorvane("--formats notice,csv -o " + quoted(output.path()) + " " + quoted(project.path()));
    EXPECT_EQ(taken.status, 2);
    EXPECT_THAT(taken.error,
                EndsWith("Couldn't save " + (output / "NOTICE.txt").string() + ": Is a directory\n"));
}

TEST(Command, ReadsOnlyTheEcosystemsFoldersAndEnvironmentsAskedFor) {
    const TemporaryFolder project{
        {"package.json", "{}"},
        {"package-lock.json", R"({"packages": {"node_modules/gull": {"version": "2.0"}}})"},
        {"Package.resolved",
         R"({"pins": [{"identity": "lantern", "location": "l", "state": {"version": "1"}}]})"},
        {"[a,b]/lantern/LICENSE", mit},
        {"My.xcodeproj/project.pbxproj", ""},
        {"home/Library/Developer/Xcode/DerivedData/My-1/SourcePackages/checkouts/lantern/LICENSE", mit},
        {"env/site-packages/six-1.16.dist-info/METADATA", "Name: six\nVersion: 1.16\nLicense: MIT\n"}};
    const std::string options = "--no-derived-data --checkouts '[a,b]' --python-env env/site-packages .";
    const std::string inside = "cd " + quoted(project.path()) + " && HOME=\"$PWD/home\"";
    EXPECT_THAT(quorvane(options, inside).output,
                AllOf(HasSubstr("[a,b] (Checked-out packages)"), HasSubstr("six "), HasSubstr("gull "),
                      Not(HasSubstr("DerivedData"))));
    EXPECT_THAT(quorvane("--ecosystem python " + options, inside).output,
                AllOf(HasSubstr("six "), Not(HasSubstr("gull ")), Not(HasSubstr("lantern "))));
    EXPECT_THAT(quorvane(".", inside).output, HasSubstr("DerivedData"));
}

TEST(Command, SurvivesAHostileFolder) {
    const TemporaryFolder project = smallProject();
    ASSERT_EQ(mkfifo((project / "requirements.txt").c_str(), 0600), 0);
    project.write("deep/package.json", "{}");
    project.write("deep/package-lock.json", std::string(200'000, '['));
    project.write("Package.resolved", std::string("{\"pins\": [{}, 1]}"));
    project.write("node_modules/good/COPYING", std::string("binary\0file", 11));
    project.write("node_modules/ba\xFF\nd/package.json",
                  R"({"name": "esc\u001b[2Jape", "version": "1", "license": 7})");
    project.link("node_modules/loop", "../node_modules");
    project.link("node_modules/gpl/LICENSE", "/etc/passwd");
    project.link("itself", ".");
    std::filesystem::resize_file(project.write("node_modules/gpl/COPYING", "x"), std::uintmax_t{1} << 40);
    const Outcome outcome = quorvane("--include-dev " + quoted(project.path()));
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("gpl"), Not(HasSubstr("\x1b")), Not(HasSubstr("root:"))));
}

}  // namespace

#include "QuorvaneCLI/CommandOptions.h"

#include "QuorvaneCLI/ExitStatus.h"
#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include <CLI/CLI.hpp>

namespace {

constexpr std::string_view seeHelp = "Run quorvane --help for the options.\n";

std::vector<std::string> formatNames() {
    std::vector<std::string> names;
    for (const ScanKit::ReportFormat& row : ScanKit::reportFormats()) {
        names.emplace_back(row.rawValue);
    }
    return names;
}

std::vector<std::string> ecosystemNames() {
    std::vector<std::string> names;
    for (const ScanKit::Ecosystem ecosystem : ScanKit::allEcosystems) {
        names.emplace_back(rawValue(ecosystem));
    }
    return names;
}

/// "a, b and c", with any word before the last.
std::string inWords(std::vector<std::string> names, std::string_view lastWord) {
    const std::string last = std::move(names.back());
    names.pop_back();
    return ScanKit::Text::joined(names, ", ") + " " + std::string(lastWord) + " " + last;
}

/// The arguments as they stand on the command line, before their names are looked up.
struct RawOptions {
    std::string folder, output, paper;
    std::vector<std::string> formats, ecosystems, checkouts, pythonEnvironments, failOn;
    bool noDerivedData = false;
};

void describe(CLI::App& app, RawOptions& raw, CommandOptions& options) {
    app.description(
        "Lists the open-source licenses of a project's dependencies and writes license reports.\n"
        "It only reads the folder. What it says is information, not legal advice.");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.set_version_flag("--version", "quorvane " QUORVANE_VERSION, "Print the version and exit");
    app.add_option("FOLDER", raw.folder, "The project folder")->required()->type_name("");
    app.add_option("-o,--output", raw.output, "Write reports into this folder, made when missing")
        ->type_name("DIR");
    app.add_option("--formats", raw.formats,
                   "Which of " + ScanKit::Text::joined(formatNames(), ",") + " to write; all when left out")
        ->delimiter(',')
        ->type_name("LIST")
        ->needs("--output");
    app.add_flag("--json", options.printJSON, "Print the JSON report in place of the table");
    app.add_option("--why", options.why, "Print how the project comes to this package, in place of the table")
        ->type_name("NAME")
        ->excludes("--json");
    app.add_flag("--include-dev", options.includeDev, "Report dev-only packages too");
    app.add_option("--project-name", options.projectName, "The name that the reports print")
        ->type_name("TEXT");
    app.add_option("--prepared-for", options.preparedFor, "The client that the reports name")
        ->type_name("TEXT");
    app.add_option("--prepared-by", options.preparedBy, "Who prepared the reports")->type_name("TEXT");
    app.add_option("--paper", raw.paper, "The PDF's paper, a4 or letter; the locale's when left out")
        ->type_name("SIZE");
    app.add_option("--ecosystem", raw.ecosystems,
                   inWords(ecosystemNames(), "or") + ", repeatable; those the folder holds when left out")
        ->type_name("NAME")
        ->expected(1)
        ->allow_extra_args(false)  // else "[a,b]" would be taken for two values
        ->take_all();
    app.add_option("--checkouts", raw.checkouts, "A folder of checked-out Swift packages, repeatable")
        ->type_name("DIR")
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all();
    app.add_option("--python-env", raw.pythonEnvironments,
                   "A virtual environment or site-packages folder in place of the detected ones, repeatable")
        ->type_name("DIR")
        ->expected(1)
        ->allow_extra_args(false)
        ->take_all();
    app.add_flag("--no-derived-data", raw.noDerivedData,
                 "Leave the development tools' build-products folder out");
    app.add_option(
           "--fail-on", raw.failOn,
           "Categories and flags by their raw names, or review for whatever needs review: exit with 1 when a reported dependency has one")
        ->delimiter(',')
        ->type_name("LIST");
    app.add_flag("--quiet", options.quiet, "Show no progress");
}

CommandEnd wrong(std::string_view what) {
    // The arguments come from anywhere, as everything that is printed.
    return {wrongUsage, {}, "quorvane: " + Terminal::safe(what) + "\n" + std::string(seeHelp)};
}

std::vector<std::filesystem::path> absolutePaths(const std::vector<std::string>& paths) {
    std::vector<std::filesystem::path> absolute;
    for (const std::string& path : paths) {
        absolute.push_back(ScanKit::absolutePath(path));
    }
    return absolute;
}

/// Looks up the names in the lists; the first unknown one comes back.
std::optional<std::string> lookUpNames(const RawOptions& raw, CommandOptions& options) {
    for (const std::string& name : raw.formats) {
        const auto formats = ScanKit::reportFormats();
        const auto row = std::ranges::find(formats, name, &ScanKit::ReportFormat::rawValue);
        if (row == formats.end()) {
            return "--formats takes " + inWords(formatNames(), "and") + ", not \"" + name + "\"";
        }
        options.formats = options.formats | row->bit;
    }
    if (!raw.paper.empty()) {
        options.paper = ScanKit::paperFromRawValue(raw.paper);
        if (!options.paper) {
            return "--paper takes a4 or letter, not \"" + raw.paper + "\"";
        }
    }
    for (const std::string& name : raw.ecosystems) {
        const auto ecosystem = ScanKit::ecosystemFromRawValue(name);
        if (!ecosystem) {
            return "--ecosystem takes " + inWords(ecosystemNames(), "or") + ", not \"" + name + "\"";
        }
        options.ecosystems.insert(*ecosystem);
    }
    for (const std::string& name : raw.failOn) {
        if (!options.failOn.add(name)) {
            return "--fail-on takes categories, flags and review, not \"" + name + "\"";
        }
    }
    return std::nullopt;
}

}  // namespace

std::variant<CommandOptions, CommandEnd> readCommandLine(int count, const char* const* arguments) {
    CLI::App app;
    RawOptions raw;
    CommandOptions options;
    describe(app, raw, options);
    app.name("quorvane");
    try {
        app.parse(count, arguments);
    } catch (const CLI::Success& success) {
        // The library tells of --help and --version this way, too.
        std::ostringstream text;
        app.exit(success, text, text);
        return CommandEnd{0, text.str(), {}};
    } catch (const CLI::ParseError& error) {
        return wrong(error.what());
    }
    if (const std::optional<std::string> unknown = lookUpNames(raw, options)) {
        return wrong(*unknown);
    }
    if (options.formats == ScanKit::ReportFormats::none) {
        options.formats = ScanKit::allReportFormats();
    }
    options.folder = ScanKit::absolutePath(raw.folder);
    if (app.count("--output") > 0) {
        options.output = ScanKit::absolutePath(raw.output);
    }
    options.checkouts = absolutePaths(raw.checkouts);
    options.pythonEnvironments = absolutePaths(raw.pythonEnvironments);
    options.useDerivedData = !raw.noDerivedData;
    return options;
}

#include "QuorvaneCLI/CommandOptions.h"

#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Paths.h"

#include <array>
#include <sstream>
#include <system_error>
#include <utility>

#include <CLI/CLI.hpp>

namespace {

constexpr int wrongUsage = 2;
constexpr std::string_view seeHelp = "Run quorvane --help for the options.\n";

constexpr std::array<std::pair<std::string_view, ScanKit::ReportFormats>, 4> formatNames{{
    {"pdf", ScanKit::ReportFormats::pdf},
    {"notice", ScanKit::ReportFormats::notice},
    {"csv", ScanKit::ReportFormats::csv},
    {"json", ScanKit::ReportFormats::json},
}};

/// The arguments as they stand on the command line, before their names are looked up.
struct RawOptions {
    std::string folder, output, projectName;
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
    app.add_option("--formats", raw.formats, "Which of pdf,notice,csv,json to write; all when left out")
        ->delimiter(',')
        ->type_name("LIST")
        ->needs("--output");
    app.add_flag("--json", options.printJson, "Print the JSON report in place of the table");
    app.add_flag("--include-dev", options.includeDev, "Report dev-only packages too");
    app.add_option("--project-name", raw.projectName, "The name that the reports print")->type_name("TEXT");
    app.add_option("--prepared-for", options.preparedFor, "The client that the reports name")
        ->type_name("TEXT");
    app.add_option("--prepared-by", options.preparedBy, "Who prepared the reports")->type_name("TEXT");
    app.add_option("--ecosystem", raw.ecosystems,
                   "swiftpm, npm or python, repeatable; those the folder holds when left out")
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
    return {wrongUsage, {}, "quorvane: " + Terminal::safe(what) + "\n" + std::string(seeHelp)};
}

std::filesystem::path absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return ScanKit::standardized(error ? std::filesystem::path(path) : absolute);
}

std::vector<std::filesystem::path> absolutePaths(const std::vector<std::string>& paths) {
    std::vector<std::filesystem::path> absolute;
    for (const std::string& path : paths) {
        absolute.push_back(absolutePath(path));
    }
    return absolute;
}

/// Looks up the names in the lists; the first unknown one comes back.
std::optional<std::string> lookUpNames(const RawOptions& raw, CommandOptions& options) {
    for (const std::string& name : raw.formats) {
        const auto* row =
            std::ranges::find(formatNames, name, &std::pair<std::string_view, ScanKit::ReportFormats>::first);
        if (row == formatNames.end()) {
            return "--formats takes pdf, notice, csv and json, not \"" + name + "\"";
        }
        options.formats = options.formats | row->second;
    }
    for (const std::string& name : raw.ecosystems) {
        const auto ecosystem = ScanKit::ecosystemFromRawValue(name);
        if (!ecosystem) {
            return "--ecosystem takes swiftpm, npm or python, not \"" + name + "\"";
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
        for (const auto& [name, format] : formatNames) {
            options.formats = options.formats | format;
        }
    }
    options.folder = absolutePath(raw.folder);
    if (app.count("--output") > 0) {
        options.output = absolutePath(raw.output);
    }
    if (app.count("--project-name") > 0) {
        options.projectName = raw.projectName;
    }
    options.checkouts = absolutePaths(raw.checkouts);
    options.pythonEnvironments = absolutePaths(raw.pythonEnvironments);
    options.useDerivedData = !raw.noDerivedData;
    return options;
}

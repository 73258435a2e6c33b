#include "QuorvaneCLI/CommandOptions.h"

#include "QuorvaneCLI/ExitStatus.h"
#include "QuorvaneCLI/HelpText.h"
#include "QuorvaneCLI/OptionTable.h"
#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <utility>

#include <CLI/CLI.hpp>

namespace {

constexpr std::string_view seeHelp = "Run quorvane --help for the options.\n";

/// The arguments as they stand on the command line, before their names are looked up.
struct RawOptions {
    std::string folder, output, color, paper;
    std::vector<std::string> formats, ecosystems, checkouts, pythonEnvironments, failOn;
    bool noDerivedData = false;
};

/// Ties the rows of the option table to the places that their values go to.
class Binder {
public:
    explicit Binder(CLI::App& app) : app_(app) {}

    void flag(std::string_view name, bool& value) { app_.add_flag(namesOf(name), value); }
    template <typename Value>
    CLI::Option* one(std::string_view name, Value& value) {
        return app_.add_option(namesOf(name), value);
    }
    /// An option that may be repeated. It takes the one argument after it and no more, which may be the folder.
    CLI::Option* several(std::string_view name, std::vector<std::string>& values) {
        CLI::Option* option =
            app_.add_option(namesOf(name), values)->expected(1)->allow_extra_args(false)->take_all();
        return optionRow(name).isList ? option->delimiter(',') : option;
    }

private:
    static std::string namesOf(std::string_view name) {
        const std::string_view shortName = optionRow(name).shortName;
        return (shortName.empty() ? "" : "-" + std::string(shortName) + ",") + "--" + std::string(name);
    }
    CLI::App& app_;
};

void bind(CLI::App& app, RawOptions& raw, CommandOptions& options) {
    Binder binder(app);
    app.set_help_flag("-h,--help");
    app.set_version_flag("--version", "");
    app.add_option("FOLDER", raw.folder)->required();
    binder.flag("json", options.printJSON);
    binder.one("why", options.why)->excludes("--json");
    binder.one("color", raw.color);
    binder.flag("quiet", options.quiet);
    CLI::Option* output = binder.one("output", raw.output);
    binder.several("formats", raw.formats)->needs(output);
    binder.flag("include-dev", options.includeDev);
    binder.one("project-name", options.projectName);
    binder.one("prepared-for", options.preparedFor);
    binder.one("prepared-by", options.preparedBy);
    binder.one("paper", raw.paper);
    binder.several("ecosystem", raw.ecosystems);
    binder.several("checkouts", raw.checkouts);
    binder.several("python-env", raw.pythonEnvironments);
    binder.flag("no-derived-data", raw.noDerivedData);
    binder.several("fail-on", raw.failOn);
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

/// "--formats takes pdf, notice and csv, not "doc"".
std::string unknownName(std::string_view option, std::string_view lastWord, const std::string& name) {
    return "--" + std::string(option) + " takes " + inWords(choicesFor(optionRow(option).value), lastWord) +
           ", not \"" + name + "\"";
}

std::optional<ColourUse> colourUseNamed(std::string_view name) {
    const std::vector<std::string> names = choicesFor(OptionValue::colorChoice);
    const auto place = std::ranges::find(names, name);
    if (place == names.end()) {
        return std::nullopt;
    }
    return static_cast<ColourUse>(place - names.begin());
}

/// Looks up the names in the lists; the first unknown one comes back.
std::optional<std::string> lookUpNames(const RawOptions& raw, CommandOptions& options) {
    for (const std::string& name : raw.formats) {
        const auto formats = ScanKit::reportFormats();
        const auto row = std::ranges::find(formats, name, &ScanKit::ReportFormat::rawValue);
        if (row == formats.end()) {
            return unknownName("formats", "and", name);
        }
        options.formats = options.formats | row->bit;
    }
    if (!raw.paper.empty()) {
        options.paper = ScanKit::paperFromRawValue(raw.paper);
        if (!options.paper) {
            return unknownName("paper", "or", raw.paper);
        }
    }
    for (const std::string& name : raw.ecosystems) {
        const auto ecosystem = ScanKit::ecosystemFromRawValue(name);
        if (!ecosystem) {
            return unknownName("ecosystem", "or", name);
        }
        options.ecosystems.insert(*ecosystem);
    }
    for (const std::string& name : raw.failOn) {
        if (!options.failOn.add(name)) {
            return "--fail-on takes categories, flags and review, not \"" + name + "\"";
        }
    }
    if (!raw.color.empty()) {
        const auto colour = colourUseNamed(raw.color);
        if (!colour) {
            return unknownName("color", "or", raw.color);
        }
        options.colour = *colour;
    }
    return std::nullopt;
}

}  // namespace

std::variant<CommandOptions, CommandEnd> readCommandLine(int count, const char* const* arguments) {
    CLI::App app;
    RawOptions raw;
    CommandOptions options;
    bind(app, raw, options);
    try {
        app.parse(count, arguments);
    } catch (const CLI::CallForHelp&) {
        return CommandEnd{done, helpText(), {}};
    } catch (const CLI::CallForVersion&) {
        return CommandEnd{done, versionText(), {}};
    } catch (const CLI::ParseError& error) {
        return wrong(error.what());
    }
    if (const std::optional<std::string> unknown = lookUpNames(raw, options)) {
        return wrong(*unknown);
    }
    if (options.formats == ScanKit::ReportFormats::none) {
        options.formats = ScanKit::usualReportFormats();
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

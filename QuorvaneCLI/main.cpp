#include "QuorvaneCLI/CommandOptions.h"
#include "QuorvaneCLI/ExitStatus.h"
#include "QuorvaneCLI/ProgressLine.h"
#include "QuorvaneCLI/ResultText.h"
#include "QuorvaneCLI/Terminal.h"
#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Reports/ReportSummary.h"
#include "ScanKit/Reports/ReportWriter.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Scanner.h"
#include "ScanKit/Support/AtomicFile.h"
#include "ScanKit/Support/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>
#include <vector>

#include <dirent.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <unistd.h>

namespace {

/// What went wrong with standard output first; 0 while nothing did. A later flush may succeed all the same.
int outputError = 0;

void print(std::FILE* stream, const std::string& text) {
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), stream) < text.size() && stream == stdout) {
        outputError = outputError != 0 ? outputError : errno;
    }
}

/// Whether all that was printed to standard output has arrived there.
bool isPrinted() {
    errno = 0;
    if (std::fflush(stdout) != 0 && outputError == 0) {
        outputError = errno;
    }
    return outputError == 0 && std::ferror(stdout) == 0;
}

/// Why the folder cannot be read, or nothing.
std::optional<std::string> faultOf(const std::filesystem::path& folder) {
    // Opened for a try: permissions alone do not tell for root, or on a network.
    if (DIR* opened = opendir(folder.c_str())) {
        closedir(opened);
        return std::nullopt;
    }
    return std::strerror(errno);
}

ScanKit::ScanResult scan(const CommandOptions& options) {
    const ScanKit::Detection detection = ScanKit::detect(options.folder);
    ScanKit::ScanOptions scanOptions{.ecosystems = options.ecosystems,
                                     .checkoutFolders = options.checkouts,
                                     .pythonEnvironments = options.pythonEnvironments,
                                     .useXcodeDerivedData = options.useDerivedData};
    if (options.ecosystems.empty()) {
        scanOptions.ecosystems = detection.ecosystemsToRead(options.pythonEnvironments);
    }
    ProgressLine line(!options.quiet);
    return ScanKit::Scanner::scan(
        options.folder, scanOptions, detection,
        {.progress = [&](const ScanKit::ScanProgress& progress) { line.show(progress); }});
}

ScanKit::ReportOptions reportOptions(const CommandOptions& options) {
    return {.projectName = ScanKit::reportedProjectName(options.projectName, options.folder),
            .preparedFor = options.preparedFor,
            .preparedBy = options.preparedBy,
            .includeDev = options.includeDev,
            .paper = options.paper.value_or(ScanKit::paperOfEnvironment())};
}

/// Saves the reports; what cannot be saved, and why, when one cannot.
std::optional<std::string> saveInto(const std::filesystem::path& folder, const ScanKit::ScanResult& result,
                                    const ScanKit::ReportOptions& report, ScanKit::ReportFormats formats) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        return folder.string() + ": " + error.message();
    }
    const ScanKit::SavedReports saved = ScanKit::saveReports(result, report, formats, folder);
    for (const std::string& warning : saved.warnings) {
        print(stderr, "Warning: " + Terminal::safe(warning) + "\n");
    }
    if (saved.failure) {
        return saved.failedFile.string() + ": " + *saved.failure;
    }
    return std::nullopt;
}

/// Lists the reported packages that meet --fail-on; true when there is one.
bool listMet(const CommandOptions& options, const ScanKit::ScanResult& result,
             const ScanKit::ReportOptions& report) {
    std::string list;
    for (const ScanKit::Dependency* dependency : reportedDependencies(result, report)) {
        if (options.failOn.isMetBy(*dependency)) {
            const std::string package = dependency->name + " " + dependency->version;
            list += "  " + Terminal::safe(package + ": " + dependency->licenseDisplay()) + "\n";
        }
    }
    if (list.empty()) {
        return false;
    }
    print(stderr, "These dependencies meet --fail-on:\n" + list);
    return true;
}

/// Whether every dependency file was read: nothing can be promised about packages that nobody saw.
bool isWhole(const ScanKit::ScanResult& result) {
    return std::ranges::none_of(result.warnings, [](const ScanKit::ScanWarning& warning) {
        return warning.kind == ScanKit::ScanWarning::Kind::dependencyFileUnreadable;
    });
}

void printResult(const CommandOptions& options, const ScanKit::ScanResult& result,
                 const ScanKit::ReportOptions& report) {
    if (options.why) {
        print(stdout, whyText(result, *options.why, TextStyle::of(STDOUT_FILENO, options.colour)));
        return;
    }
    if (options.printJSON) {
        print(stdout, ScanKit::Exports::json(result, report));
        print(stdout, "\n");
        return;
    }
    print(stdout, resultText(result, report, TextStyle::of(STDOUT_FILENO, options.colour)));
}

/// Whoever names a folder relies on what is in it: one that cannot be read must not look like an empty one.
std::vector<std::filesystem::path> namedFolders(const CommandOptions& options) {
    std::vector<std::filesystem::path> folders{options.folder};
    folders.insert(folders.end(), options.checkouts.begin(), options.checkouts.end());
    folders.insert(folders.end(), options.pythonEnvironments.begin(), options.pythonEnvironments.end());
    return folders;
}

int run(const CommandOptions& options) {
    for (const std::filesystem::path& folder : namedFolders(options)) {
        if (const auto fault = faultOf(folder)) {
            print(stderr, "quorvane: " + Terminal::safe(folder.string()) + ": " + *fault + "\n");
            return wrongUsage;
        }
    }
    const ScanKit::ScanResult result = scan(options);
    const ScanKit::ReportOptions report = reportOptions(options);
    // Before the result, which may be long, and on the other stream, so that a script's output stays clean.
    const TextStyle style = TextStyle::of(STDERR_FILENO, options.colour);
    for (const ScanKit::ScanWarning& warning : result.warnings) {
        print(stderr, style.warning(Terminal::safe(warning.sentence)));
    }
    if (!result.warnings.empty() && style.columns) {
        print(stderr, "\n");
    }
    printResult(options, result, report);
    if (!isPrinted()) {
        print(stderr, std::string("quorvane: standard output: ") + std::strerror(outputError) + "\n");
        return wrongUsage;
    }
    if (options.output) {
        if (const auto failure = saveInto(*options.output, result, report, options.formats)) {
            print(stderr, "Couldn't save " + Terminal::safe(*failure) + "\n");
            return wrongUsage;
        }
    }
    const bool isMet = listMet(options, result, report);
    if (!options.failOn.isEmpty() && !isWhole(result)) {
        print(stderr, "quorvane: --fail-on can't be answered while a dependency file can't be read\n");
        return wrongUsage;
    }
    return isMet ? failOnMet : done;
}

}  // namespace

/// A scan needs its memory until the program ends. Handing freed memory back to the system between its steps, and
/// asking for it again page by page, costs a tenth of the time of a scan.
void keepFreedMemory() {
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    mallopt(M_TOP_PAD, 1 << 20);
#endif
}

int main(int count, char** arguments) {
    keepFreedMemory();
    ScanKit::removeUnfinishedFilesOnSignals();
    const auto command = readCommandLine(count, arguments);
    if (const auto* end = std::get_if<CommandEnd>(&command)) {
        print(stdout, end->output);
        print(stderr, end->error);
        return end->status;
    }
    return run(std::get<CommandOptions>(command));
}

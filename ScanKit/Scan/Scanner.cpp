#include "ScanKit/Scan/Scanner.h"

#include "ScanKit/Identification/Identification.h"
#include "ScanKit/Readers/NPM/NPMParser.h"
#include "ScanKit/Readers/Python/PythonParser.h"
#include "ScanKit/Readers/ReadLimits.h"
#include "ScanKit/Readers/ReportableText.h"
#include "ScanKit/Readers/SwiftPM/SwiftPMParser.h"
#include "ScanKit/Scan/DerivedData.h"
#include "ScanKit/Scan/ProgressReporter.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Warnings.h"
#include "ScanKit/Support/Dates.h"
#include "ScanKit/Support/FileSystem.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <numeric>
#include <tuple>
#include <utility>

namespace ScanKit {
namespace {

/// What a report names by its path must not depend on where the program was started.
ScanOptions withAbsolutePaths(ScanOptions options) {
    std::ranges::transform(options.checkoutFolders, options.checkoutFolders.begin(), absolutePath);
    std::ranges::transform(options.pythonEnvironments, options.pythonEnvironments.begin(), absolutePath);
    return options;
}

/// One scan: runs the readers in order, and notes the sources and warnings as it goes.
class Run {
public:
    Run(const std::filesystem::path& root, const ScanOptions& options, const Detection& detection,
        const ScanControl& control)
        : root_(absolutePath(root)),
          options_(withAbsolutePaths(options)),
          detection_(detection),
          control_(control),
          progress_(control.progress) {}

    ScanResult result() {
        result_.projectName = displayName(root_);
        result_.rootPath = Text::oneLine(root_.string());
        result_.scannedAt = Dates::current();
        readAll();
        identifyAll();
        return std::move(result_);
    }

private:
    void readAll() {
        struct ReaderRow {
            Ecosystem value;
            void (Run::*read)();
        };
        static constexpr auto readers = std::to_array<ReaderRow>({
            {Ecosystem::swiftpm, &Run::readSwiftPackages},
            {Ecosystem::npm, &Run::readNPM},
            {Ecosystem::python, &Run::readPython},
        });
        static_assert(hasRowForEachEnumerator(readers), "each enumerator needs its row here");
        for (const ReaderRow& reader : readers) {
            if (options_.ecosystems.contains(reader.value)) {
                (this->*reader.read)();
            }
        }
    }

    std::string shown(const std::filesystem::path& path) const { return displayPath(path, root_); }

    void addSource(Ecosystem ecosystem, const std::filesystem::path& path, std::string_view kind) {
        result_.sources.push_back({ecosystem, shown(path), std::string(kind)});
    }

    void warn(ScanWarning warning) { result_.warnings.push_back(std::move(warning)); }

    ReadControl readControl() {
        return {.stop = control_.stop,
                .threadLimit = control_.threadLimit,
                .packageRead = [this](std::string_view name) { progress_.packageDone(name); }};
    }

    /// The way of every reader's packages into the result.
    void append(std::vector<RawDependency> packages) {
        std::ranges::for_each(packages, makeReportable);
        std::ranges::move(packages, std::back_inserter(packages_));
    }

    void readSwiftPackages() {
        if (detection_.resolvedFiles.empty()) {
            return;  // checked-out packages that nothing pins are not the project's
        }
        std::vector<SwiftPMParser::Pin> pins;
        for (const std::filesystem::path& file : detection_.resolvedFiles) {
            const std::optional<std::string> bytes = readFile(file, largestLockfile);
            auto found = bytes ? SwiftPMParser::pins(*bytes) : std::nullopt;
            if (!found) {
                warn(Warnings::dependencyFileUnreadable(file, root_));
                continue;
            }
            std::ranges::move(*found, std::back_inserter(pins));
            addSource(Ecosystem::swiftpm, file, "Package.resolved");
        }
        const std::vector<std::filesystem::path> checkouts = checkoutFolders();
        for (const std::filesystem::path& folder : checkouts) {
            addSource(Ecosystem::swiftpm, folder, "Checked-out packages");
        }
        std::vector<RawDependency> packages = SwiftPMParser::dependencies(pins, checkouts, readControl());
        const auto isMissing = [](const RawDependency& package) { return !package.folder; };
        if (std::ranges::any_of(packages, isMissing)) {
            warn(Warnings::swiftPackagesNotCheckedOut());
        }
        append(std::move(packages));
    }

    /// The project's own checkouts first, then the user's, then those of the development tools.
    std::vector<std::filesystem::path> checkoutFolders() const {
        std::vector<std::filesystem::path> folders = detection_.checkoutFolders;
        std::ranges::copy(options_.checkoutFolders, std::back_inserter(folders));
        if (options_.useXcodeDerivedData) {
            std::ranges::copy(Scanner::derivedDataCheckouts(detection_.xcodeProjectNames),
                              std::back_inserter(folders));
        }
        return folders;
    }

    void readNPM() {
        for (const std::filesystem::path& lockfile : detection_.npmLockfiles) {
            readNPMLockfile(lockfile);
        }
        for (const std::filesystem::path& modules : detection_.npmModulesWithoutLock) {
            // One for each tree: two projects may both use a package, and each report line says from where.
            NPMParser::Seen seen;
            std::vector<RawDependency> packages;
            NPMParser::walk(modules, 0, seen, packages, readControl());
            append(std::move(packages));
            addSource(Ecosystem::npm, modules, "Installed packages (no lockfile)");
        }
        const bool hasOnlyManifests =
            detection_.npmLockfiles.empty() && detection_.npmModulesWithoutLock.empty();
        if (hasOnlyManifests && !detection_.npmManifestsOnly.empty()) {
            warn(Warnings::npmPackagesNotListed(detection_.npmManifestsOnly.front(), root_));
        }
    }

    void readNPMLockfile(const std::filesystem::path& lockfile) {
        const std::filesystem::path folder = lockfile.parent_path();
        const std::optional<std::string> bytes = readFile(lockfile, largestLockfile);
        auto packages = bytes ? NPMParser::dependencies(*bytes, folder, readControl()) : std::nullopt;
        if (!packages) {
            warn(Warnings::dependencyFileUnreadable(lockfile, root_));
            return;
        }
        append(std::move(*packages));
        addSource(Ecosystem::npm, lockfile, "npm lockfile");
        if (isFolder(folder / "node_modules")) {
            addSource(Ecosystem::npm, folder / "node_modules", "Installed packages");
        } else {
            warn(Warnings::npmModulesMissing(folder, root_));
        }
    }

    void readPython() {
        const std::vector<PythonParser::Requirement> requirements = readRequirements();
        const std::vector<std::filesystem::path>& environments =
            options_.pythonEnvironments.empty() ? detection_.virtualEnvs : options_.pythonEnvironments;
        std::vector<std::filesystem::path> sitePackages;
        for (const std::filesystem::path& environment : environments) {
            for (std::filesystem::path& folder : PythonParser::sitePackages(environment)) {
                addSource(Ecosystem::python, folder, "Installed packages");
                sitePackages.push_back(std::move(folder));
            }
        }
        const PythonParser::InstalledPackages installed =
            PythonParser::installed(sitePackages, readControl());
        append(PythonParser::dependencies(requirements, installed));
        // With something installed, a requirement that is not has a note of its own.
        if (installed.empty() && !requirements.empty()) {
            warn(Warnings::pythonEnvironmentMissing());
        }
    }

    std::vector<PythonParser::Requirement> readRequirements() {
        std::vector<PythonParser::Requirement> requirements;
        const auto read = [&](const std::filesystem::path& file, std::string_view kind, const auto& parse) {
            const std::optional<std::string> text = readTextFile(file, largestLockfile);
            if (!text) {
                warn(Warnings::dependencyFileUnreadable(file, root_));
                return;
            }
            std::ranges::move(parse(*text), std::back_inserter(requirements));
            addSource(Ecosystem::python, file, kind);
        };
        for (const std::filesystem::path& file : detection_.requirementFiles) {
            const std::string name = Text::lowercased(displayName(file));
            const bool isDev =
                name.find("dev") != std::string::npos || name.find("test") != std::string::npos;
            read(file, "requirements",
                 [&](std::string_view text) { return PythonParser::requirementsFromText(text, isDev); });
        }
        for (const std::filesystem::path& file : detection_.poetryLocks) {
            read(file, "Poetry lockfile", PythonParser::requirementsFromPoetryLock);
        }
        return requirements;
    }

    /// Identifies the packages into the order of the result: each writes to its own place.
    void identifyAll() {
        const std::vector<std::size_t> order = resultOrder();
        TextReadings readings;
        result_.dependencies.resize(packages_.size());
        progress_.begin(packages_.size());
        const auto identifyOne = [&](std::size_t i) {
            // The raw record is not needed any more: a large scan holds each package only once.
            const RawDependency package = std::exchange(packages_[order[i]], {});
            result_.dependencies[i] = identify(package, readings);
            progress_.packageDone(package.name);
        };
        forEachIndex(packages_.size(), identifyOne, control_.stop, control_.threadLimit);
    }

    /// The packages by ecosystem, then by name whatever its letter case, then by version; equal ones as they came.
    std::vector<std::size_t> resultOrder() const {
        std::vector<std::string> names;
        names.reserve(packages_.size());
        for (const RawDependency& package : packages_) {
            names.push_back(Text::lowercased(package.name));
        }
        std::vector<std::size_t> order(packages_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto key = [&](std::size_t i) {
            return std::tie(packages_[i].ecosystem, names[i], packages_[i].version);
        };
        std::ranges::stable_sort(order, {}, key);
        return order;
    }

    std::filesystem::path root_;
    const ScanOptions options_;
    const Detection& detection_;
    const ScanControl& control_;
    ProgressReporter progress_;
    ScanResult result_;
    std::vector<RawDependency> packages_;
};

}  // namespace

ScanResult Scanner::scan(const std::filesystem::path& root, const ScanOptions& options,
                         const std::optional<Detection>& detection, const ScanControl& control) {
    return Run(root, options, detection ? *detection : detect(root), control).result();
}

}  // namespace ScanKit

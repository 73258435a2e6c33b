#include "ScanKit/Scan/Scanner.h"

#include "ScanKit/Identification/Identification.h"
#include "ScanKit/Scan/ForeignFiles.h"
#include "ScanKit/Scan/ProgressReporter.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Reading.h"
#include "ScanKit/Support/Dates.h"
#include "ScanKit/Support/Parallel.h"
#include "ScanKit/Support/Paths.h"
#include "ScanKit/Support/Text.h"

#include <algorithm>
#include <array>
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

/// One scan: runs the readers in order, and identifies what they found.
class Run {
public:
    Run(const std::filesystem::path& root, const ScanOptions& options, const Detection& detection,
        const ScanControl& control)
        : root_(absolutePath(root)),
          options_(withAbsolutePaths(options)),
          detection_(detection),
          control_(control),
          progress_(control.progress) {
        if (control.cache != nullptr) {
            cached_.emplace(*control.cache);
        }
    }

    ScanResult result() {
        result_.projectName = displayName(root_);
        result_.rootPath = Text::oneLine(root_.string());
        result_.scannedAt = Dates::current();
        std::optional<BackgroundWork> preparing;
        if (!options_.ecosystems.empty()) {
            preparing.emplace(prepareIdentification, control_.threadLimit);
        }
        readAll();
        identifyAll();
        if (cached_ && !control_.stop.stop_requested()) {
            cached_->complete();
        }
        return std::move(result_);
    }

private:
    void readAll() {
        struct ReaderRow {
            Ecosystem value;
            void (*read)(Reading&);
        };
        static constexpr auto readers = std::to_array<ReaderRow>({
            {Ecosystem::swiftpm, readSwiftPackages},
            {Ecosystem::npm, readNPMPackages},
            {Ecosystem::python, readPythonPackages},
        });
        static_assert(hasRowForEachEnumerator(readers), "each enumerator needs its row here");
        const ReadControl control{
            .stop = control_.stop,
            .threadLimit = control_.threadLimit,
            .packageRead = [this](std::string_view name) { progress_.packageDone(name); },
            .cache = cached()};
        Reading reading(root_, options_, detection_, control);
        for (const ReaderRow& reader : readers) {
            if (options_.ecosystems.contains(reader.value)) {
                reader.read(reading);
            }
        }
        warnOfForeignFiles(reading);
        result_.sources = std::move(reading.sources);
        result_.warnings = std::move(reading.warnings);
        packages_ = std::move(reading.packages);
    }

    /// Identifies the packages into the order of the result: each writes to its own place.
    void identifyAll() {
        const std::vector<std::size_t> order = resultOrder();
        TextReadings readings;
        result_.dependencies.resize(packages_.size());
        progress_.begin(packages_.size());
        const auto identifyOne = [&](std::size_t i) {
            // The raw record is not needed any more: a large scan holds each package only once.
            Dependency& dependency = result_.dependencies[i];
            dependency = identify(std::exchange(packages_[order[i]], {}), readings, cached());
            progress_.packageDone(dependency.name);
        };
        forEachIndex(packages_.size(), identifyOne, control_.stop, control_.threadLimit);
    }

    /// The packages by ecosystem, then by name whatever its letter case, then by version; equal ones as they came.
    std::vector<std::size_t> resultOrder() const {
        std::vector<std::string> names;
        names.reserve(packages_.size());
        for (const auto& package : packages_) {
            names.push_back(Text::lowercased(package->name));
        }
        std::vector<std::size_t> order(packages_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto key = [&](std::size_t i) {
            return std::tie(packages_[i]->ecosystem, names[i], packages_[i]->version);
        };
        std::ranges::stable_sort(order, {}, key);
        return order;
    }

    FileCache::Round* cached() { return cached_ ? &*cached_ : nullptr; }

    std::filesystem::path root_;
    const ScanOptions options_;
    const Detection& detection_;
    const ScanControl& control_;
    ProgressReporter progress_;
    std::optional<FileCache::Round> cached_;
    ScanResult result_;
    std::vector<std::shared_ptr<const RawDependency>> packages_;
};

}  // namespace

ScanResult Scanner::scan(const std::filesystem::path& root, const ScanOptions& options,
                         const std::optional<Detection>& detection, const ScanControl& control) {
    return Run(root, options, detection ? *detection : detect(root), control).result();
}

}  // namespace ScanKit

#include "Benchmarks/GeneratedProject.h"
#include "ScanKit/Readers/NPM/NPMParser.h"
#include "ScanKit/Reports/Exports.h"
#include "ScanKit/Scan/ProjectDetection.h"
#include "ScanKit/Scan/Scanner.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

/// A generated project on disk, made once for each size and removed at the end.
class Project {
public:
    explicit Project(std::size_t count) {
        std::string pattern = (std::filesystem::temp_directory_path() / "quorvane-benchmark-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        GeneratedProject::write(folder_, count);
    }
    ~Project() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    const std::filesystem::path& folder() const { return folder_; }

    static const Project& ofSize(std::size_t count) {
        static std::map<std::size_t, std::unique_ptr<Project>> projects;
        std::unique_ptr<Project>& project = projects[count];
        if (!project) {
            project = std::make_unique<Project>(count);
        }
        return *project;
    }

private:
    std::filesystem::path folder_;
};

ScanKit::ScanResult scanned(const Project& project, std::optional<unsigned> threads = {}) {
    return ScanKit::Scanner::scan(project.folder(), {.ecosystems = {ScanKit::Ecosystem::npm}}, {},
                                  {.threadLimit = threads});
}

std::size_t packages(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

void reportRate(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readLockfile(benchmark::State& state) {
    const std::string lockfile = GeneratedProject::lockfile(packages(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanKit::NPMParser::dependencies(lockfile, "/nowhere"));
    }
    reportRate(state);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(lockfile.size()));
}
BENCHMARK(readLockfile)->Arg(5'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void scanProject(benchmark::State& state) {
    const Project& project = Project::ofSize(packages(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(scanned(project));
    }
    reportRate(state);
}
BENCHMARK(scanProject)->Arg(300)->Arg(3'000)->Arg(30'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void scanProjectOnOneThread(benchmark::State& state) {
    const Project& project = Project::ofSize(packages(state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(scanned(project, 1));
    }
    reportRate(state);
}
BENCHMARK(scanProjectOnOneThread)->Arg(3'000)->Unit(benchmark::kMillisecond)->UseRealTime();

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

/// A scan and one that takes over all of it, in turns; the time is that of the second.
void scanAgain(benchmark::State& state, const std::filesystem::path& folder) {
    // What was written just now is read again.
    std::this_thread::sleep_for(ScanKit::FileCache::defaultSettlingTime + std::chrono::seconds(1));
    ScanKit::FileCache cache;
    const auto timed = [&](ScanKit::FileCache* used) {
        const auto begin = std::chrono::steady_clock::now();
        const ScanKit::Detection found = ScanKit::detect(folder);
        const ScanKit::ScanResult result = ScanKit::Scanner::scan(
            folder, {.ecosystems = found.ecosystemsToRead({})}, found, {.cache = used});
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        benchmark::DoNotOptimize(result);
        return taken.count();
    };
    timed(&cache);
    std::vector<double> first;
    std::vector<double> again;
    for (auto _ : state) {
        first.push_back(timed(nullptr));
        again.push_back(timed(&cache));
        state.SetIterationTime(again.back());
    }
    state.counters["first_ms"] = 1000 * median(first);
    state.counters["again_ms"] = 1000 * median(again);
    state.counters["ratio"] = median(again) / median(first);
}
void scanGeneratedAgain(benchmark::State& state) {
    scanAgain(state, Project::ofSize(packages(state)).folder());
}
BENCHMARK(scanGeneratedAgain)->Arg(3'000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(31);
/// Of a real project, where QUORVANE_BENCHMARK_FOLDER names one.
void scanFolderAgain(benchmark::State& state) {
    if (const char* folder = std::getenv("QUORVANE_BENCHMARK_FOLDER")) {
        scanAgain(state, folder);
    } else {
        state.SkipWithError("QUORVANE_BENCHMARK_FOLDER is not set");
    }
}
BENCHMARK(scanFolderAgain)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(31);

using Export = std::string (*)(const ScanKit::ScanResult&, const ScanKit::ReportOptions&);

void exportResult(benchmark::State& state, Export write) {
    const ScanKit::ScanResult result = scanned(Project::ofSize(packages(state)));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::string text = write(result, {.projectName = "generated"});
        bytes += text.size();
        benchmark::DoNotOptimize(text);
    }
    reportRate(state);
    state.SetBytesProcessed(static_cast<int64_t>(bytes));
}
BENCHMARK_CAPTURE(exportResult, NOTICE, &ScanKit::Exports::notice)->Arg(3'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportResult, HTML, &ScanKit::Exports::html)->Arg(3'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportResult, CSV, &ScanKit::Exports::csv)->Arg(3'000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(exportResult, JSON, &ScanKit::Exports::json)->Arg(3'000)->Unit(benchmark::kMillisecond);

}  // namespace

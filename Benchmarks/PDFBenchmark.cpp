#include "ScanKit/Reports/PDF/PDFCanvas.h"
#include "ScanKit/Reports/PDF/PDFReport.h"

#include <array>
#include <map>
#include <string>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

namespace {

using namespace ScanKit;

struct Kind {
    std::string_view license;
    LicenseCategory category;
    std::vector<Flag> flags;
    std::vector<std::string> notes;
};

/// Licenses, flags and notes about as often as real projects have them.
const std::array<Kind, 8>& kinds() {
    using enum LicenseCategory;
    static const std::array<Kind, 8> all{{
        {"MIT", permissive, {}, {}},
        {"MIT", permissive, {Flag::noLicenseFile}, {"No license file is part of the package."}},
        {"ISC", permissive, {}, {}},
        {"Apache-2.0", permissive, {}, {}},
        {"BSD-3-Clause", permissive, {}, {}},
        {"MIT OR Apache-2.0", permissive, {}, {}},
        {"CC0-1.0", publicDomain, {}, {}},
        {"LGPL-2.1-or-later",
         weakCopyleft,
         {Flag::weakCopyleft},
         {"Changes to the package itself must be shared."}},
    }};
    return all;
}

/// Every package has a name, a version and a link of its own, as in a large web project.
ScanResult resultOf(std::size_t count) {
    static constexpr std::array<std::string_view, 8> words{"array",  "stream", "string", "plugin",
                                                           "loader", "parse",  "async",  "support"};
    ScanResult result{.projectName = "storefront", .rootPath = "/projects/storefront"};
    result.sources = {{Ecosystem::npm, "package-lock.json", "npm lockfile"}};
    for (std::size_t i = 0; i < count; ++i) {
        const Kind& kind = kinds()[i * 7 % 11 % kinds().size()];
        std::string name = (i % 4 == 0 ? "@scope/" : "") + std::string(words[i % 8]) + "-";
        name += std::string(words[i / 8 % 8]) + "-" + std::to_string(i);
        result.dependencies.push_back(
            {.ecosystem = Ecosystem::npm,
             .name = name,
             .version = std::to_string(i % 12) + "." + std::to_string(i % 31) + ".0",
             .source = "https://registry.example.com/" + name + ".tgz",
             .license = std::string(kind.license),
             .category = kind.category,
             .basis = LicenseBasis::metadataAndText,
             .flags = kind.flags,
             .notes = kind.notes});
    }
    return result;
}

/// Made once for each size.
const ScanResult& storedResult(std::size_t count) {
    static std::map<std::size_t, ScanResult> results;
    const auto [place, isNew] = results.try_emplace(count);
    if (isNew) {
        place->second = resultOf(count);
    }
    return place->second;
}

/// The most memory that this process ever held, in kilobytes where Linux counts.
long mostMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/// Sizes grow from run to run, so that the most memory grows by what each document needs.
void document(benchmark::State& state) {
    const ScanResult& result = storedResult(static_cast<std::size_t>(state.range(0)));
    const long before = mostMemory();
    std::size_t size = 0;
    for (auto _ : state) {
        size = PDFReport::document(result, {.projectName = "Storefront"}).size();
    }
    state.counters["growthKB"] = static_cast<double>(mostMemory() - before);
    state.counters["sizeKB"] = static_cast<double>(size) / 1'024;
}
BENCHMARK(document)->Arg(10)->Arg(3'000)->Arg(30'000)->Unit(benchmark::kMillisecond)->UseRealTime();

void layoutAlone(benchmark::State& state) {
    const ScanResult& result = storedResult(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        PDFCanvas canvas;
        benchmark::DoNotOptimize(PDFReport::laidOut(result, {.projectName = "Storefront"}, canvas));
    }
}
BENCHMARK(layoutAlone)->Arg(3'000)->Arg(30'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

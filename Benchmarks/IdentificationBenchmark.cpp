#include "ScanKit/Identification/LicenseExpression.h"
#include "ScanKit/Identification/LicenseMatcher.h"
#include "ScanKit/Identification/SPDX.h"
#include "ScanKit/Identification/TextReading.h"
#include "ScanKit/Licenses/LicenseTexts.h"

#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace std::string_literals;

std::string standard(std::string_view name) {
    return std::string(ScanKit::standardText(name).value());
}

/// Readable English that is no license, of the length of a long README.
std::string prose() {
    const std::string paragraph =
        "The library reads a table of values and keeps it in memory, so that later questions are answered without going back to the disk. A caller names the column it wants, and the answer comes back in the order in which the rows were written.\nMost programs need no more than that; those that do can walk the rows themselves and stop whenever they have seen enough of them for their purpose.\n\n";
    std::string text;
    for (int i = 0; i < 40; ++i) {
        text += paragraph;
    }
    return text;
}

std::string severalLicenses() {
    return standard("MIT") + "\n---\n\n" + standard("BSD-3-Clause") + "\n---\n\n" + standard("Apache-2.0");
}

void reportThroughput(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes));
}

void matchText(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanKit::LicenseMatcher::matches(text));
    }
    reportThroughput(state, text.size());
}
BENCHMARK_CAPTURE(matchText, MIT, standard("MIT"));
BENCHMARK_CAPTURE(matchText, Apache, standard("Apache-2.0"));
BENCHMARK_CAPTURE(matchText, GPL, standard("GPL-3.0"));
BENCHMARK_CAPTURE(matchText, several licenses, severalLicenses());
BENCHMARK_CAPTURE(matchText, prose, prose());

/// The matcher and what identification asks beside it.
void readText(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanKit::readLicenseText(text));
    }
    reportThroughput(state, text.size());
}
BENCHMARK_CAPTURE(readText, MIT, standard("MIT"));
BENCHMARK_CAPTURE(readText, GPL, standard("GPL-3.0"));

void parseExpression(benchmark::State& state) {
    const std::string text = "(MIT OR Apache-2.0) AND GPL-2.0-or-later WITH Classpath-exception-2.0";
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanKit::LicenseExpression::parse(text));
    }
    reportThroughput(state, text.size());
}
BENCHMARK(parseExpression);

void normalizeName(benchmark::State& state, const std::string& name) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanKit::SPDX::normalize(name));
    }
    reportThroughput(state, name.size());
}
BENCHMARK_CAPTURE(normalizeName, identifier, "MIT"s);
BENCHMARK_CAPTURE(normalizeName, free text, "Apache License, Version 2.0"s);

}  // namespace

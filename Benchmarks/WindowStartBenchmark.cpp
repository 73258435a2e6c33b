/// The desktop program itself, from its start to what it shows first: the page that asks for a folder, and the table of the
/// project that QUORVANE_BENCHMARK_FOLDER names. On the platform that QT_QPA_PLATFORM names; settings are those of a first
/// start. One round is one process; WindowStartProbe.cpp tells from within when it is there.

#include <algorithm>
#include <chrono>
#include <vector>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// In seconds; nothing when the program did not get there.
double secondsToShow(const QString& widget, const QStringList& arguments) {
    const QTemporaryDir settings;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settings.path());
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(QUORVANE_START_PROBE));
    environment.insert(QStringLiteral("QUORVANE_AWAITED"), widget);
    const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
    environment.insert(QStringLiteral("QUORVANE_STARTED"), QString::number(now.count()));
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(QUORVANE_APP_PATH), arguments, QIODevice::ReadOnly);
    program.waitForFinished(60'000);
    return program.readAllStandardOutput().trimmed().toDouble() / 1e9;
}

void show(benchmark::State& state, const QString& widget, const QStringList& arguments) {
    std::vector<double> times;
    for (auto _ : state) {
        times.push_back(secondsToShow(widget, arguments));
        state.SetIterationTime(times.back());
    }
    std::ranges::sort(times);
    if (times.empty() || times.front() <= 0) {
        state.SkipWithError("the program did not show it");
    } else {
        state.counters["median_ms"] = 1000 * times[times.size() / 2];
        state.counters["least_ms"] = 1000 * times.front();
    }
}

void showFirstPage(benchmark::State& state) {
    show(state, QStringLiteral("welcome"), {});
}

void showTable(benchmark::State& state) {
    if (const QString folder = qEnvironmentVariable("QUORVANE_BENCHMARK_FOLDER"); !folder.isEmpty()) {
        show(state, QStringLiteral("dependencyTable"), {folder});
    } else {
        state.SkipWithError("QUORVANE_BENCHMARK_FOLDER is not set");
    }
}

BENCHMARK(showFirstPage)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(31);
BENCHMARK(showTable)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(15);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

/// The real window over 30,000 packages: each round is one key in the search field, one choice of a filter, one
/// click on a heading or one scan's end, to the table painted anew. One frame of a 60 Hz screen is 16 ms.

#include "QuorvaneApp/Commands/AppCommands.h"
#include "QuorvaneApp/MainWindow.h"
#include "QuorvaneApp/Model/AppModel.h"
#include "QuorvaneApp/Platform/FileRevealer.h"
#include "QuorvaneApp/Platform/FolderChooser.h"
#include "QuorvaneApp/Updates/UpdaterController.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <string>

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

namespace {

constexpr int packageCount = 30000;

class NoPanels : public FolderChooser {
public:
    void choose(const FolderQuestion&, Answer) override {}
};

class NoFileManager : public FileRevealer {
public:
    void reveal(const std::vector<std::filesystem::path>&) override {}
};

class NoUpdates : public UpdaterController {
public:
    std::optional<QUrl> feedURL() const override { return std::nullopt; }
    void checkForUpdates() override {}
    bool automaticallyChecksForUpdates() const override { return false; }
    void setAutomaticallyChecksForUpdates(bool) override {}
};

/// Names that share their beginnings, so that the first keys keep nearly all rows and the next ones scatter
/// them.
ScanFindings manyPackages() {
    constexpr std::array licenses{"MIT", "Apache-2.0", "BSD-3-Clause", "GPL-3.0-only", "MPL-2.0"};
    constexpr std::array stems{"package", "parser", "@scope/particle", "helper", "toolkit"};
    ScanFindings found;
    for (std::size_t i = 0; i < packageCount; ++i) {
        ScanKit::Dependency dependency{.ecosystem = ScanKit::Ecosystem::npm,
                                       .name = stems[i * 7 % stems.size()] + std::to_string(i),
                                       .version = "1." + std::to_string(i % 40),
                                       .license = licenses[i % licenses.size()],
                                       .category = ScanKit::LicenseCategory::permissive};
        if (i % 9 == 0) {
            dependency.flags = {ScanKit::Flag::noLicenseFile};
        }
        found.result.dependencies.push_back(std::move(dependency));
    }
    return found;
}

using Clock = std::chrono::steady_clock;

/// The window with the packages, painted.
struct WindowOfMany {
    WindowOfMany() {
        window.resize(1600, 1000);
        window.show();
        model.openFolder(std::filesystem::temp_directory_path());
        finishScan();
    }
    void finishScan() {
        while (model.scanning()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        QCoreApplication::processEvents();
    }

    NoPanels panels;
    NoFileManager fileManager;
    std::atomic<Clock::time_point> scanEnd = Clock::time_point();
    AppModel model{
        false,
        {.folderChooser = panels, .fileRevealer = fileManager, .scan = [this](const auto&, const auto&) {
             ScanFindings found = manyPackages();
             scanEnd = Clock::now();
             return found;
         }}};
    AppCommands commands{model};
    NoUpdates updates;
    MainWindow window{model, commands, updates, [](const QString&) {}};
    QTableView& table = *window.findChild<QTableView*>(QStringLiteral("dependencyTable"));
    QLineEdit& search = *window.findChild<QLineEdit*>(QStringLiteral("search"));
};

/// Each round once, with the slowest told besides the mean.
template <typename Round>
void run(benchmark::State& state, Round round) {
    double slowest = 0;
    int number = 0;
    for (auto _ : state) {
        const Clock::time_point begin = round(number++);
        QCoreApplication::processEvents();  // paints what changed
        const std::chrono::duration<double> taken = Clock::now() - begin;
        state.SetIterationTime(taken.count());
        slowest = std::max(slowest, taken.count() * 1000);
    }
    state.counters["slowest_ms"] = slowest;
}

enum class Rows { inOrder, sorted, allSelected };

void typing(benchmark::State& state, Rows rows) {
    WindowOfMany many;
    if (rows == Rows::sorted) {
        many.table.sortByColumn(3, Qt::DescendingOrder);
    } else if (rows == Rows::allSelected) {
        many.table.selectAll();
    }
    QCoreApplication::processEvents();
    const QStringList typed{QStringLiteral("p"),    QStringLiteral("pa"), QStringLiteral("par"),
                            QStringLiteral("pa"),   QStringLiteral("p"),  QString(),
                            QStringLiteral("m"),    QStringLiteral("mi"), QStringLiteral("mit"),
                            QStringLiteral("mit "), QStringLiteral("9"),  QString()};
    run(state, [&](int key) {
        const auto begin = Clock::now();
        many.search.setText(typed[key % typed.size()]);
        return begin;
    });
}

void filtering(benchmark::State& state) {
    WindowOfMany many;
    const std::array filters{DependencyFilter::needsReview(), DependencyFilter::all(),
                             DependencyFilter::unknown(),
                             DependencyFilter::ecosystem(ScanKit::Ecosystem::npm)};
    run(state, [&](int number) {
        const auto begin = Clock::now();
        many.model.setFilter(filters[static_cast<std::size_t>(number) % filters.size()]);
        return begin;
    });
}

void sorting(benchmark::State& state) {
    WindowOfMany many;
    run(state, [&](int number) {
        const auto begin = Clock::now();
        many.table.sortByColumn(number % 6, number % 12 < 6 ? Qt::AscendingOrder : Qt::DescendingOrder);
        return begin;
    });
}

void firstRows(benchmark::State& state) {
    WindowOfMany many;
    run(state, [&](int) {
        many.model.scan();
        many.finishScan();
        return many.scanEnd.load();
    });
}

BENCHMARK_CAPTURE(typing, in_order, Rows::inOrder)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(240);
BENCHMARK_CAPTURE(typing, sorted, Rows::sorted)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(240);
BENCHMARK_CAPTURE(typing, all_selected, Rows::allSelected)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(240);
BENCHMARK(filtering)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(40);
BENCHMARK(sorting)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(24);
BENCHMARK(firstRows)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
